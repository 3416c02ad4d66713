#include "overlay/ghost/ghost_area.h"

#include <algorithm>

namespace nimbletype {
namespace {

bool containsOrigin(const BottomLeftRect& frame, const BottomLeftRect& rect) {
  return rect.x >= frame.x && rect.x < frame.right() && rect.y >= frame.y && rect.y < frame.top();
}

struct VerticalExtent {
  double bottom, top;
};

VerticalExtent extentToKeep(const GhostContent& content) {
  const BottomLeftRect& caret = content.caretRect;
  if (content.anchored || !content.fieldFrame) return {caret.y, caret.top()};
  return {std::min(caret.y, content.fieldFrame->y), std::max(caret.top(), content.fieldFrame->top())};
}

}  // namespace

GhostArea ghostArea(const GhostContent& content, std::span<const Screen> screens) {
  const auto screen = std::ranges::find_if(
      screens, [&](const Screen& s) { return containsOrigin(s.frame, content.caretRect); });
  if (screen == screens.end()) return {};
  const VerticalExtent keep = extentToKeep(content);
  const BottomLeftRect& visible = screen->visibleFrame;
  const double bottom = keep.bottom < visible.y ? screen->frame.y : visible.y;
  const double top = keep.top > visible.top() ? screen->frame.top() : visible.top();
  return {{visible.x, bottom, visible.width, top - bottom}, screen->frame.y};
}

}  // namespace nimbletype
