#include "text/right_to_left.h"

#include <unicode/uchar.h>

#include "text/code_points.h"

namespace nimbletype::text {
namespace {

bool runsRightToLeft(UCharDirection direction) {
  return direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
}

bool isNumber(UCharDirection direction) {
  return direction == U_EUROPEAN_NUMBER || direction == U_ARABIC_NUMBER;
}

UCharDirection directionOf(const CodePoint& point) {
  return u_charDirection(static_cast<UChar32>(point.value));
}

}  // namespace

bool startsRightToLeft(std::string_view paragraph) {
  for (std::size_t at = 0; at < paragraph.size();) {
    const CodePoint point = codePointAt(paragraph, at);
    const UCharDirection direction = directionOf(point);
    if (runsRightToLeft(direction)) return true;
    if (direction == U_LEFT_TO_RIGHT) return false;
    at += point.size;
  }
  return false;
}

ParagraphTail paragraphTail(std::string_view paragraph, bool rightToLeft) {
  ParagraphTail tail;
  for (std::size_t end = paragraph.size(); end > 0;) {
    const CodePoint point = codePointBefore(paragraph, end);
    const UCharDirection direction = directionOf(point);
    const bool ownWay = rightToLeft ? runsRightToLeft(direction)
                                    : direction == U_LEFT_TO_RIGHT || direction == U_EUROPEAN_NUMBER;
    if (ownWay) return tail;
    if (rightToLeft) tail.runsOtherWay |= direction == U_LEFT_TO_RIGHT || isNumber(direction);
    if (!rightToLeft) tail.runsOtherWay |= runsRightToLeft(direction) || direction == U_ARABIC_NUMBER;
    tail.units += point.value > 0xFFFF ? 2 : 1;
    end -= point.size;
  }
  return tail;
}

bool endsRightToLeft(std::string_view s) {
  for (std::size_t end = s.size(); end > 0;) {
    const CodePoint point = codePointBefore(s, end);
    const UCharDirection direction = directionOf(point);
    if (runsRightToLeft(direction)) return true;
    if (direction == U_LEFT_TO_RIGHT || isNumber(direction)) return false;
    end -= point.size;
  }
  return false;
}

}  // namespace nimbletype::text
