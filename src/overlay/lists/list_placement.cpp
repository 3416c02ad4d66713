#include "overlay/lists/list_placement.h"

#include <algorithm>

namespace nimbletype {
namespace {

constexpr double gap = 6;         // between the caret's row and the list
constexpr double sideMargin = 4;  // to the edges of the screen

bool contains(const BottomLeftRect& rect, double x, double y) {
  return x >= rect.x && x < rect.x + rect.width && y >= rect.y && y < rect.y + rect.height;
}

}  // namespace

BottomLeftRect listFrame(const BottomLeftRect& caret, std::size_t rows, const ListShape& shape,
                         std::span<const Screen> screens) {
  const double height = static_cast<double>(rows) * shape.rowHeight + shape.padding;
  BottomLeftRect frame{caret.x - shape.leftShift, caret.y - height - gap, shape.width, height};
  const auto screen =
      std::ranges::find_if(screens, [&](const Screen& s) { return contains(s.frame, caret.x, caret.y); });
  if (screen == screens.end()) return frame;
  const BottomLeftRect& visible = screen->visibleFrame;
  const double rightmost = visible.x + visible.width - sideMargin - shape.width;
  frame.x = std::max(std::min(frame.x, rightmost), visible.x + sideMargin);
  if (frame.y < visible.y) frame.y = caret.y + caret.height + gap;
  return frame;
}

}  // namespace nimbletype
