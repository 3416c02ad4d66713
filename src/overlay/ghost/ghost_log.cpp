#include "overlay/ghost/ghost_log.h"

namespace nimbletype {
namespace {

std::string whole(double value) {
  return std::to_string(static_cast<long>(value));
}

}  // namespace

std::string boxLine(const GhostContent& content, const GhostLayout& layout, const GhostArea& area) {
  const double rowBottom =
      content.caretRect.y + (content.caretRect.height - layout.lineHeight) / 2 + content.verticalNudge;
  const bool below = layout.container && layout.container->top() <= rowBottom;
  return std::string("layout: box ") + (below ? "below" : "above") + " the row, rows " +
         std::to_string(layout.rowsBelow) + ", area bottom " + whole(area.rect.y) + ", screen bottom " +
         whole(area.screenBottom);
}

}  // namespace nimbletype
