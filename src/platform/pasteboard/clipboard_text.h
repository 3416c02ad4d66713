#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/system/task.h"

namespace nimbletype {

// What is known of the clipboard without reading what was copied.
struct ClipboardState {
  std::int64_t changeCount = 0;  // another number after each copy
  bool isConcealed = false;      // marked as secret by whoever copied it
  bool isTransient = false;      // there in passing, such as what this process pastes
  bool operator==(const ClipboardState&) const = default;
};

// The text that was copied last. Main thread only.
class ClipboardText {
 public:
  virtual ~ClipboardText() = default;
  // Cheap enough to be asked every second.
  virtual ClipboardState state() = 0;
  // Tells the plain text in a later turn; none when there is none. An owner that does not
  // answer is waited for; another reading replaces this one.
  using Handler = std::function<void(std::optional<std::string>)>;
  [[nodiscard]] virtual Task read(Handler done) = 0;
};

}  // namespace nimbletype
