#include <unicode/utf16.h>

#include "text/code_points.h"
#include "text/text.h"

namespace nimbletype::text {

std::u16string toUtf16(std::string_view utf8) {
  if (isAscii(utf8)) return {utf8.begin(), utf8.end()};
  std::u16string out;
  out.reserve(utf8.size());
  for (std::size_t pos = 0; pos < utf8.size();) {
    const auto [value, size] = codePointAt(utf8, pos);
    if (U_IS_BMP(value)) {
      out += static_cast<char16_t>(value);
    } else {
      out += static_cast<char16_t>(U16_LEAD(value));
      out += static_cast<char16_t>(U16_TRAIL(value));
    }
    pos += size;
  }
  return out;
}

std::string toUtf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size();) {
    UChar32 value = 0;
    U16_NEXT_OR_FFFD(utf16.data(), i, utf16.size(), value);
    char bytes[U8_MAX_LENGTH];
    int length = 0;
    U8_APPEND_UNSAFE(bytes, length, value);
    out.append(bytes, static_cast<std::size_t>(length));
  }
  return out;
}

std::size_t utf16Length(std::string_view utf8) {
  if (isAscii(utf8)) return utf8.size();
  std::size_t length = 0;
  for (std::size_t pos = 0; pos < utf8.size();) {
    const auto [value, size] = codePointAt(utf8, pos);
    length += U16_LENGTH(value);
    pos += size;
  }
  return length;
}

bool isValidUtf8(std::string_view s) {
  if (isAscii(s)) return true;
  const auto size = static_cast<std::int32_t>(s.size());
  for (std::int32_t i = 0; i < size;) {
    UChar32 value = 0;
    U8_NEXT(s.data(), i, size, value);
    if (value < 0) return false;
  }
  return true;
}

std::string repaired(std::string_view s) {
  return isValidUtf8(s) ? std::string(s) : toUtf8(toUtf16(s));
}

}  // namespace nimbletype::text
