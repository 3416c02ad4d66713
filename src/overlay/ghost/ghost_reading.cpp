#include "overlay/ghost/ghost_reading.h"

#include <cmath>

#include "text/text.h"

namespace nimbletype {
namespace {

using text::Direction;

// What a line's measured width may be off, and how far from a field's edge its text may begin.
constexpr double slack = 30;
constexpr double fieldPadding = 6;

BottomLeftRect mirrored(BottomLeftRect rect) {
  rect.x = -rect.right();
  return rect;
}

std::string_view firstLetterOn(std::string_view line) {
  return text::firstCharacter(text::trimmedStart(line));
}

// Lines are as wide as their text, and begin at an edge of the field.
bool standsAtLeftEdge(const GhostContent& content, double lineWidth) {
  if (!content.fieldFrame) return false;
  const BottomLeftRect& field = *content.fieldFrame;
  const bool fitsLeft = content.caretRect.x <= field.x + lineWidth + slack;
  const bool fitsRight = content.caretRect.x >= field.right() - lineWidth - slack;
  return fitsLeft && !fitsRight;
}

// At the end of a line from right to left the caret stands left of the line's first letter.
bool standsRightOfFirstLetter(const GhostContent& content) {
  return content.lineStartX && content.caretRect.x > *content.lineStartX + 1;
}

bool isOnRightHalf(const GhostContent& content) {
  return content.fieldFrame && content.caretRect.x > content.fieldFrame->x + content.fieldFrame->width / 2;
}

// Where the line begins, in its own direction. The start that a field tells is the left edge of its first
// character, which begins the line only if it runs the line's way.
std::optional<double> lineStartX(const GhostContent& content, Direction direction, const FontSpec& font,
                                 const FontMetrics& metrics) {
  if (!content.lineStartX || text::firstStrongDirection(content.lineText).value_or(direction) != direction)
    return std::nullopt;
  if (direction == Direction::leftToRight) return content.lineStartX;
  return *content.lineStartX + metrics.width(font, firstLetterOn(content.lineText));
}

double startOfText(const GhostContent& content, Direction direction, const FontSpec& font,
                   const FontMetrics& metrics) {
  if (const auto known = lineStartX(content, direction, font, metrics)) return *known;
  if (!content.fieldFrame) return content.caretRect.x;
  const BottomLeftRect& field = *content.fieldFrame;
  return direction == Direction::leftToRight ? field.x + fieldPadding : field.right() - fieldPadding;
}

}  // namespace

text::Direction lineDirection(const GhostContent& content, const FontSpec& font, const FontMetrics& metrics) {
  if (content.lineText.empty()) {
    const bool startsRight = text::firstStrongDirection(content.text) == Direction::rightToLeft;
    return startsRight && isOnRightHalf(content) ? Direction::rightToLeft : Direction::leftToRight;
  }
  if (text::firstStrongDirection(content.lineText) != Direction::rightToLeft) return Direction::leftToRight;
  if (standsRightOfFirstLetter(content)) return Direction::leftToRight;
  return standsAtLeftEdge(content, metrics.width(font, content.lineText)) ? Direction::leftToRight
                                                                          : Direction::rightToLeft;
}

// Applications tell either side of such words as the caret's place: the line's own width says which.
double endOfLineX(const GhostContent& content, Direction direction, const FontSpec& font,
                  const FontMetrics& metrics) {
  const std::string_view against = text::counterflow(content.lineText, direction);
  if (against.empty()) return content.caretRect.x;
  const double way = direction == Direction::leftToRight ? 1 : -1;
  const double here = content.caretRect.x, there = here + way * metrics.width(font, against);
  const double expected =
      startOfText(content, direction, font, metrics) + way * metrics.width(font, content.lineText);
  return std::abs(here - expected) <= std::abs(there - expected) ? here : there;
}

GhostContent inReadingOrder(GhostContent content, Direction direction, const FontSpec& font,
                            const FontMetrics& metrics) {
  const double end = endOfLineX(content, direction, font, metrics);
  content.lineStartX = lineStartX(content, direction, font, metrics);
  content.caretRect.x = end;
  if (direction == Direction::leftToRight) return content;
  content.caretRect.x = -end;
  if (content.lineStartX) content.lineStartX = -*content.lineStartX;
  if (content.fieldFrame) content.fieldFrame = mirrored(*content.fieldFrame);
  return content;
}

GhostArea mirrored(GhostArea area) {
  area.rect = mirrored(area.rect);
  return area;
}

GhostLayout mirrored(GhostLayout layout) {
  layout.frame = mirrored(layout.frame);
  for (auto& line : layout.lines) {
    line.rect = mirrored(line.rect);
    line.rightToLeft = true;
  }
  if (layout.container) layout.container = mirrored(*layout.container);
  if (layout.hintX) layout.hintX = -*layout.hintX - layout.hintWidth;
  return layout;
}

}  // namespace nimbletype
