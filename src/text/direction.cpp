#include "text/direction.h"

#include <unicode/ubidi.h>

#include <algorithm>
#include <memory>

#include "text/code_points.h"
#include "text/text.h"

namespace nimbletype::text {
namespace {

using Bidi = std::unique_ptr<UBiDi, decltype(&ubidi_close)>;

bool isRightToLeft(UChar32 c) {
  const UCharDirection direction = u_charDirection(c);
  return direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
}

bool hasRightToLeft(std::string_view s) {
  if (isAscii(s)) return false;
  for (std::size_t at = 0; at < s.size();) {
    const auto [value, size] = codePointAt(s, at);
    if (isRightToLeft(value)) return true;
    at += size;
  }
  return false;
}

// How many UTF-16 units at the end have another level than the line.
std::size_t counterflowUnits(const std::u16string& line, UBiDiLevel base) {
  UErrorCode status = U_ZERO_ERROR;
  const auto length = static_cast<std::int32_t>(line.size());
  const Bidi bidi(ubidi_open(), &ubidi_close);
  ubidi_setPara(bidi.get(), line.data(), length, base, nullptr, &status);
  const UBiDiLevel* levels = ubidi_getLevels(bidi.get(), &status);
  if (U_FAILURE(status)) return 0;
  std::int32_t start = length;
  while (start > 0 && levels[start - 1] != base) --start;
  return static_cast<std::size_t>(length - start);
}

}  // namespace

std::optional<Direction> firstStrongDirection(std::string_view s) {
  for (std::size_t at = 0; at < s.size();) {
    const auto [value, size] = codePointAt(s, at);
    if (isRightToLeft(value)) return Direction::rightToLeft;
    if (u_charDirection(value) == U_LEFT_TO_RIGHT) return Direction::leftToRight;
    at += size;
  }
  return std::nullopt;
}

std::string_view counterflow(std::string_view line, Direction base) {
  if (base == Direction::leftToRight && !hasRightToLeft(line)) return {};
  const std::u16string units = toUtf16(line);
  const std::size_t count = counterflowUnits(units, base == Direction::rightToLeft ? 1 : 0);
  const std::size_t bytes = toUtf8(std::u16string_view(units).substr(units.size() - count)).size();
  return line.substr(line.size() - std::min(line.size(), bytes));
}

}  // namespace nimbletype::text
