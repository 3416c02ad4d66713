#include "text/character_breaks.h"

#include <unicode/uchar.h>

#include <array>

#include "text/code_points.h"

namespace nimbletype::text {
namespace {

constexpr std::uint32_t bit(int value) {
  return 1U << value;
}
constexpr std::uint32_t breaks =
    bit(U_GCB_OTHER) | bit(U_GCB_CONTROL) | bit(U_GCB_CR) | bit(U_GCB_LF) | bit(U_GCB_LV) | bit(U_GCB_LVT);
constexpr std::uint32_t breaksBeforeAStart = breaks | bit(U_GCB_V) | bit(U_GCB_T) | bit(U_GCB_SPACING_MARK);
constexpr std::uint32_t breaksAfterAnEnd = breaks | bit(U_GCB_L);
constexpr std::uint32_t bases = bit(U_GCB_OTHER) | bit(U_GCB_LV) | bit(U_GCB_LVT);
constexpr std::uint32_t marks = bit(U_GCB_EXTEND) | bit(U_GCB_ZWJ) | bit(U_GCB_SPACING_MARK);
// Before here no script joins its letters across a mark.
constexpr UChar32 firstIndic = 0x900;

std::uint8_t lookedUp(UChar32 c) {
  return static_cast<std::uint8_t>(u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK));
}

// The grapheme cluster break value; those of the alphabets are kept at hand.
std::uint8_t breakValue(UChar32 c) {
  static const auto alphabets = [] {
    std::array<std::uint8_t, 0x3000> values{};
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = lookedUp(static_cast<UChar32>(i));
    return values;
  }();
  const auto i = static_cast<std::size_t>(c);
  return i < alphabets.size() ? alphabets[i] : lookedUp(c);
}

bool isOneOf(std::uint32_t set, UChar32 c) {
  return (bit(breakValue(c)) & set) != 0;
}

}  // namespace

bool surelyApart(UChar32 left, UChar32 right) {
  if (left < 0x80 && right < 0x80) return left != '\r' || right != '\n';
  if (!isOneOf(breaksAfterAnEnd, right)) return false;
  const auto value = breakValue(left);
  return (bit(value) & breaksBeforeAStart) != 0 || (value == U_GCB_EXTEND && right < firstIndic);
}

bool isOneCharacter(std::string_view stretch) {
  const CodePoint first = codePointAt(stretch, 0);
  if (first.size == stretch.size() || stretch == "\r\n") return true;
  if (!isOneOf(bases, first.value)) return false;
  for (std::size_t pos = first.size; pos < stretch.size();) {
    const CodePoint next = codePointAt(stretch, pos);
    if (!isOneOf(marks, next.value)) return false;
    pos += next.size;
  }
  return true;
}

}  // namespace nimbletype::text
