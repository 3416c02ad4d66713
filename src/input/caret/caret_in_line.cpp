#include "input/caret/caret_in_line.h"

#include <cmath>

#include "text/text.h"

namespace nimbletype {
namespace {

using Box = std::optional<TopLeftRect>;

std::string_view firstLine(std::string_view s) {
  return s.substr(0, s.find_first_of("\r\n"));
}

std::string_view lastLine(std::string_view s) {
  const std::size_t lineBreak = s.find_last_of("\r\n");
  return lineBreak == std::string_view::npos ? s : s.substr(lineBreak + 1);
}

bool isUsable(const Box& box) {
  return box && isFinite(*box) && box->height > 0 && box->width >= 0 && (box->x > 0 || box->y > 0);
}

// Neither has been wrapped away from the other.
bool shareRow(const TopLeftRect& a, const TopLeftRect& b) {
  return std::abs(a.y - b.y) < b.height / 2 && std::abs(a.height - b.height) < b.height / 2;
}

CaretPlace caretAt(double x, const TopLeftRect& row) {
  return {{x, row.y, 1, row.height}, {}};
}

}  // namespace

LineAroundCaret lineAroundCaret(std::string_view before, std::string_view after) {
  LineAroundCaret line;
  const std::string_view text = lastLine(before), rest = firstLine(after);
  line.rightToLeft = text::startsRightToLeft(text);
  line.tail = text::paragraphTail(text, line.rightToLeft);
  line.atEnd = text::isBlank(rest);
  return line;
}

// A field may lay out all its lines from left to right, whatever they say: then what follows the last word
// from right to left stands at that word's right.
std::optional<CaretPlace> caretInLine(const LineAroundCaret& line, const CaretBoxes& boxes,
                                      const LineEndBoxes& end) {
  if (!isUsable(boxes.previousCharacter)) return std::nullopt;
  const TopLeftRect& previous = *boxes.previousCharacter;
  if (line.atEnd && isUsable(boxes.emptyRange) && shareRow(*boxes.emptyRange, previous))
    return caretAt(boxes.emptyRange->x, *boxes.emptyRange);
  if (line.needsTail() && isUsable(end.lastOwn) && isUsable(end.tail) && shareRow(*end.tail, *end.lastOwn)) {
    const bool leftOfOwn = end.tail->x < end.lastOwn->x;
    if (line.rightToLeft != leftOfOwn) return caretAt(leftOfOwn ? previous.x : previous.right(), previous);
    return caretAt(line.rightToLeft ? end.tail->x : end.tail->right(), previous);
  }
  const bool atLeft = line.rightToLeft != line.tail.runsOtherWay;
  return caretAt(atLeft ? previous.x : previous.right(), previous);
}

}  // namespace nimbletype
