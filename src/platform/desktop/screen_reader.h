#pragma once
#include <functional>
#include <string>
#include <vector>

#include "platform/desktop/geometry.h"
#include "platform/desktop/workspace.h"
#include "platform/system/task.h"

namespace nimbletype {

// A piece of text and where it stands on the screen.
struct PlacedText {
  std::string text;
  TopLeftRect frame;
  bool operator==(const PlacedText&) const = default;
};

// Text recognised in a picture of a window, for windows that tell nothing through Accessibility. Main thread
// only; the work itself is done on another one. Pictures are kept no longer than the recognition takes.
class ScreenReader {
 public:
  virtual ~ScreenReader() = default;
  // Whether there is something that recognises text, and the desktop lets this process see other windows.
  // Never asks the user.
  virtual bool isPermitted() = 0;
  // The lines found, none when nothing could be read; given up on after `longestRead`.
  static constexpr double longestRead = 3;  // seconds
  using Handler = std::function<void(std::vector<PlacedText>)>;
  [[nodiscard]] virtual Task read(const ScreenWindow& window, Handler done) = 0;
};

}  // namespace nimbletype
