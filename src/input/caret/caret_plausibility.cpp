#include "input/caret/caret_plausibility.h"

#include <algorithm>
#include <cmath>

namespace nimbletype {
namespace {

constexpr std::ptrdiff_t severalBreaks = 2;
constexpr double mostMargin = 8;  // above and below the text together

}  // namespace

bool isOutOfSight(const TopLeftRect& caret, const TopLeftRect& frame) {
  const double middle = caret.y + caret.height / 2;
  return frame.height > 0 && (middle < frame.y || middle > frame.y + frame.height);
}

bool isSuspiciouslyHigh(const TopLeftRect& caret, const TopLeftRect& frame, std::string_view before) {
  const auto breaks = std::ranges::count(before, '\n');
  if (breaks < severalBreaks || frame.height <= 0) return false;
  const double textHeight = static_cast<double>(breaks + 1) * caret.height;
  const bool fits = textHeight + mostMargin <= frame.height;
  const bool onFirstLine = caret.y < frame.y + mostMargin + caret.height;
  return fits && onFirstLine;
}

bool isOnLineOf(const TopLeftRect& caret, const TopLeftRect& firstCharacter) {
  return firstCharacter.height > 0 && std::abs(caret.y - firstCharacter.y) < firstCharacter.height / 2;
}

}  // namespace nimbletype
