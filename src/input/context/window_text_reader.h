#pragma once
#include <functional>
#include <vector>

#include "input/field/ax_element.h"
#include "platform/desktop/screen_reader.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// What was found in a window.
struct WindowReading {
  std::vector<PlacedText> pieces;
  std::vector<PlacedText> ofField;  // the text of the focused field, told apart
  bool isAnswered = true;           // false when the application had stopped answering
  bool isPicture = false;           // recognised in a picture of the window
};

// Reads the text of a window, breadth first, in slices of a few milliseconds between which the main loop goes
// on. Nothing of secret fields or controls is ever asked for.
class WindowTextReader {
 public:
  static constexpr int mostNodes = 400, nodesInSlice = 8, mostSilent = 3;
  static constexpr Milliseconds longest{1500}, slice{4}, pause{8};
  static constexpr std::size_t mostBytes = 24'000;

  explicit WindowTextReader(MainLoop& loop) : loop_(loop) {}

  // What is found within the limits is told in a later turn. `field` is the element with the focus, if any.
  using Done = std::function<void(WindowReading)>;
  [[nodiscard]] Task read(const AXElement& window, const AXElement& field, Done done);

 private:
  MainLoop& loop_;
};

}  // namespace nimbletype
