#pragma once
#include <unicode/utf8.h>

#include <cstdint>
#include <cstring>
#include <string_view>

// Code points of a UTF-8 string, for the sources of this folder. Malformed sequences read as U+FFFD.
namespace nimbletype::text {

struct CodePoint {
  UChar32 value = 0;
  std::size_t size = 0;  // bytes
};

// The code point that starts at `pos`, which must lie inside `s`.
inline CodePoint codePointAt(std::string_view s, std::size_t pos) {
  const auto first = static_cast<unsigned char>(s[pos]);
  if (first < 0x80) return {first, 1};
  auto i = static_cast<std::int32_t>(pos);
  UChar32 value = 0;
  U8_NEXT_OR_FFFD(s.data(), i, static_cast<std::int32_t>(s.size()), value);
  return {value, static_cast<std::size_t>(i) - pos};
}

// The code point that ends at `pos`, which must not be the start of `s`.
inline CodePoint codePointBefore(std::string_view s, std::size_t pos) {
  const auto last = static_cast<unsigned char>(s[pos - 1]);
  if (last < 0x80) return {last, 1};
  auto i = static_cast<std::int32_t>(pos);
  UChar32 value = 0;
  U8_PREV_OR_FFFD(s.data(), 0, i, value);
  return {value, pos - static_cast<std::size_t>(i)};
}

inline bool isAscii(std::string_view s) {
  std::uint64_t bits = 0;
  std::size_t i = 0;
  for (; i + 8 <= s.size(); i += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, s.data() + i, 8);
    bits |= word;
  }
  for (; i < s.size(); ++i) bits |= static_cast<unsigned char>(s[i]);
  return (bits & 0x8080808080808080U) == 0;
}

// ASCII in which every byte is a character of its own.
inline bool isBytePerCharacter(std::string_view s) {
  return isAscii(s) && s.find('\r') == std::string_view::npos;
}

}  // namespace nimbletype::text
