#include "input/caret/caret_estimate.h"

#include <algorithm>
#include <cmath>

#include "input/caret/wrapped_text.h"
#include "text/right_to_left.h"

namespace nimbletype {
namespace {

constexpr double inset = 4;  // between the frame of a field and its text, on every side
constexpr double narrowest = 10;
constexpr double singleLine = 2.2;  // a field lower than so many lines holds one
constexpr double rounding = 0.5;
constexpr double highestCompact = 30, compactShare = 0.58, smallest = 11, largest = 17, usual = 13;

double lineHeight(const FontSpec& font, const FontMetrics& metrics) {
  const LineMetrics line = metrics.line(font);
  return line.ascender - line.descender + line.leading;
}

std::string_view lastLine(std::string_view text) {
  const std::size_t lineBreak = text.find_last_of("\r\n");
  return lineBreak == std::string_view::npos ? text : text.substr(lineBreak + 1);
}

double topOfLine(int lines, double height, const TopLeftRect& frame) {
  const double textHeight = lines * height;
  const bool scrolled = frame.height + rounding < textHeight + 2 * inset;
  return (scrolled ? frame.bottom() - inset : frame.y + inset + textHeight) - height;
}

}  // namespace

double usualFontSize(double fieldHeight) {
  if (fieldHeight >= highestCompact) return usual;
  return std::clamp(std::round(fieldHeight * compactShare), smallest, largest);
}

CaretPlace estimateCaret(std::string_view before, const TopLeftRect& frame, const FontSpec& font,
                         const FontMetrics& metrics) {
  const double height = lineHeight(font, metrics);
  const double room = std::max(frame.width - 2 * inset, narrowest);
  const bool fromRight = text::startsRightToLeft(lastLine(before));
  const double left = frame.x + inset, right = frame.right() - inset;
  const auto at = [&](double width, double top) {
    const double advance = std::min(right - left, width);
    return fromRight ? CaretPlace{{right - advance, top, 1, height}, {}}
                     : CaretPlace{{left + advance, top, 1, height}, left};
  };
  if (frame.height < singleLine * height)
    return at(metrics.width(font, lastLine(before)), frame.y + (frame.height - height) / 2);
  const WrappedText text = wrap(before, room, font, metrics);
  return at(text.lastLineWidth, topOfLine(text.lines, height, frame));
}

}  // namespace nimbletype
