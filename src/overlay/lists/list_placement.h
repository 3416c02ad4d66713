#pragma once
#include <span>

#include "platform/desktop/screens.h"

namespace nimbletype {

// How a list at the caret is measured, in points.
struct ListShape {
  double width = 380;
  double rowHeight = 30;
  double padding = 12;    // above and below all rows together
  double leftShift = 14;  // so far left of the caret does it begin
};

// Where a list of so many rows stands: under the caret's row, over it where there is no room below, and
// within the visible frame of the caret's screen. Screen points, origin at the bottom left of the main
// screen.
BottomLeftRect listFrame(const BottomLeftRect& caret, std::size_t rows, const ListShape& shape,
                         std::span<const Screen> screens);

}  // namespace nimbletype
