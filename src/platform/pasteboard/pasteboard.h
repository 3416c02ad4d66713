#pragma once
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/system/main_loop.h"

namespace nimbletype {

// What was on the pasteboard at one moment, known only to the adapter that saved it.
class PasteboardContents {
 public:
  virtual ~PasteboardContents() = default;
};

struct SavedPasteboard {
  std::shared_ptr<const PasteboardContents> contents;
  std::size_t formats = 0;  // saved, of all items together
  std::size_t leftOut = 0;  // not saved for want of time or room
};

// The desktop's general pasteboard, which other applications copy to and paste from. Main thread only.
class Pasteboard {
 public:
  static constexpr Milliseconds longestSave{300};
  static constexpr std::size_t largestSave = std::size_t{64} << 20;  // bytes, all formats together

  // How far an application has read the text lent last; some desktops do not tell.
  enum class Reading { unknown, notYet, underWay, done };

  virtual ~Pasteboard() = default;

  // Reads every item in every format, plain text first, and tells in a later turn. Formats that the limits
  // leave no time or room for are left out; none when there is something of which nothing could be read. A
  // copy made meanwhile is the one that is saved. One save at a time: another one replaces it.
  using SaveHandler = std::function<void(std::optional<SavedPasteboard>)>;
  [[nodiscard]] virtual Task save(SaveHandler done) = 0;

  // Replaces everything by a text that is there in passing, marked as such for clipboard histories. Once it
  // returns true, whoever pastes gets that text.
  virtual bool lend(std::string_view text) = 0;
  virtual Reading reading() const = 0;

  // Whether what was put there last by this process is there still, and nobody has copied anything since.
  virtual bool isOurs() = 0;
  // Replaces everything by what was saved.
  virtual void restore(const SavedPasteboard& saved) = 0;
};

}  // namespace nimbletype
