#include "overlay/ghost/ghost_draw.h"

namespace nimbletype {
namespace {

constexpr double boxRadius = 6, keycapRadius = 4;

BottomLeftRect inside(const BottomLeftRect& frame, BottomLeftRect rect) {
  rect.x -= frame.x;
  rect.y -= frame.y;
  return rect;
}

// A line's rectangle is rounded up to whole points, or wider for its box.
double leftOfText(const GhostLayout::Line& line, const FontSpec& font, const FontMetrics& metrics) {
  return line.rightToLeft ? line.rect.right() - metrics.width(font, line.text) : line.rect.x;
}

TextDraw keycapLabel(const BottomLeftRect& keycap, Color color, std::string_view label,
                     const FontMetrics& metrics) {
  const LineMetrics line = metrics.line(hintFont);
  const double free = keycap.height - (line.ascender - line.descender);
  return {std::string(label), hintFont, color, keycap.x + (keycap.width - metrics.width(hintFont, label)) / 2,
          keycap.y + free / 2 - line.descender};
}

}  // namespace

DrawList drawGhost(const GhostLayout& layout, const GhostColors& colors, std::string_view hintLabel,
                   const FontMetrics& metrics) {
  DrawList list{layout.frame, {}};
  if (layout.container)
    list.items.push_back(BoxDraw{inside(layout.frame, *layout.container), boxRadius, colors.box});
  for (const auto& line : layout.lines)
    list.items.push_back(TextDraw{line.text, layout.font, colors.text,
                                  leftOfText(line, layout.font, metrics) - layout.frame.x,
                                  line.baseline - layout.frame.y, line.rightToLeft});
  if (layout.hintX && !layout.lines.empty()) {
    const BottomLeftRect keycap = inside(layout.frame, keycapRect(layout));
    list.items.push_back(BoxDraw{keycap, keycapRadius, colors.keycap, colors.keycapEdge});
    list.items.push_back(keycapLabel(keycap, colors.keycapLabel, hintLabel, metrics));
  }
  return list;
}

}  // namespace nimbletype
