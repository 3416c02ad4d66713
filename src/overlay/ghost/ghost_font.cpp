#include "overlay/ghost/ghost_font.h"

#include <cmath>

namespace nimbletype {
namespace {

// The caret's place is told in whole pixels at both ends of the line.
constexpr double measuringError = 2;
constexpr double leastToTellZoom = 40, leastZoom = 0.09, smallestZoom = 0.3, largestZoom = 4;
constexpr double heightAgrees = 0.12;

}  // namespace

FontSpec fieldFont(const GhostContent& content, const FontMetrics& metrics) {
  FontSpec font{.name = "", .size = content.fontSize};
  if (content.fontName && metrics.exists(*content.fontName)) font.name = *content.fontName;
  return font;
}

FontSpec ghostFont(const GhostContent& content, FontSpec fieldFont) {
  fieldFont.size *= content.textScale;
  return fieldFont;
}

LineMetrics caretLine(const GhostContent& content, const FontSpec& fieldFont, const FontMetrics& metrics) {
  const LineMetrics own = metrics.line(fieldFont);
  const LineMetrics mixed = metrics.lineHolding(fieldFont, content.lineText);
  const auto off = [&](const LineMetrics& line) {
    return std::abs(line.ascender - line.descender - content.caretRect.height);
  };
  return off(mixed) < off(own) ? mixed : own;
}

std::optional<double> zoomOf(const GhostContent& content, const FontSpec& font, const FontMetrics& metrics) {
  if (!content.lineStartX || content.lineText.empty()) return std::nullopt;
  const double onScreen = content.caretRect.x - *content.lineStartX;
  const double measured = metrics.width(font, content.lineText);
  if (onScreen < leastToTellZoom || measured < 1) return std::nullopt;
  const LineMetrics line = metrics.line(font);
  const double zoom = onScreen / measured;
  const double taller = content.caretRect.height / (line.ascender - line.descender);
  if (std::abs(zoom - 1) < leastZoom) return 1;
  if (zoom < smallestZoom || zoom > largestZoom || std::abs(taller / zoom - 1) > heightAgrees)
    return std::nullopt;
  return zoom;
}

std::optional<bool> usesWholeAdvances(const GhostContent& content, FontSpec font,
                                      const FontMetrics& metrics) {
  if (!content.lineStartX || content.lineText.empty()) return std::nullopt;
  const double onScreen = content.caretRect.x - *content.lineStartX;
  font.wholeAdvances = true;
  const double whole = std::abs(metrics.width(font, content.lineText) - onScreen);
  font.wholeAdvances = false;
  const double natural = std::abs(metrics.width(font, content.lineText) - onScreen);
  // Neither may be right: the line is wrapped, or not in one font.
  if (std::min(whole, natural) > measuringError || std::abs(whole - natural) <= 1) return std::nullopt;
  return whole < natural;
}

}  // namespace nimbletype
