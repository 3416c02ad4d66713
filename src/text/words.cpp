#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/stringoptions.h>
#include <unicode/uchar.h>

#include "text/code_points.h"
#include "text/text.h"

namespace nimbletype::text {
namespace {

bool isWhitespaceCodePoint(UChar32 c) {
  if (c < 0x80) return c == ' ' || (c >= '\t' && c <= '\r');
  return u_isUWhiteSpace(c) != 0;
}

std::size_t skipForward(std::string_view s, std::size_t pos, bool whitespace) {
  while (pos < s.size()) {
    const auto [value, size] = codePointAt(s, pos);
    if (isWhitespaceCodePoint(value) != whitespace) break;
    pos += size;
  }
  return pos;
}

std::string asciiLowercased(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(c + (c >= 'A' && c <= 'Z' ? 'a' - 'A' : 0));
  return out;
}

}  // namespace

bool isWhitespace(std::string_view character) {
  return !character.empty() && isWhitespaceCodePoint(codePointAt(character, 0).value);
}

bool isLineBreak(std::string_view character) {
  if (character.empty()) return false;
  const auto c = codePointAt(character, 0).value;
  return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isLetter(std::string_view character) {
  return !character.empty() && u_isalpha(codePointAt(character, 0).value) != 0;
}

bool isDigit(std::string_view character) {
  return !character.empty() && u_isdigit(codePointAt(character, 0).value) != 0;
}

bool isUnspaced(std::string_view character) {
  if (character.empty()) return false;
  const int line = u_getIntPropertyValue(codePointAt(character, 0).value, UCHAR_LINE_BREAK);
  return line == U_LB_IDEOGRAPHIC || line == U_LB_COMPLEX_CONTEXT ||
         line == U_LB_CONDITIONAL_JAPANESE_STARTER;
}

std::string_view trimmed(std::string_view s) {
  return trimmedStart(trimmedEnd(s));
}

std::string_view trimmedStart(std::string_view s) {
  return s.substr(skipForward(s, 0, true));
}

std::string_view trimmedEnd(std::string_view s) {
  while (!s.empty()) {
    const auto [value, size] = codePointBefore(s, s.size());
    if (!isWhitespaceCodePoint(value)) break;
    s.remove_suffix(size);
  }
  return s;
}

bool isBlank(std::string_view s) {
  return skipForward(s, 0, true) == s.size();
}

std::string lowercased(std::string_view s) {
  if (isAscii(s)) return asciiLowercased(s);
  std::string out;
  icu::StringByteSink<std::string> sink(&out, static_cast<std::int32_t>(s.size()));
  UErrorCode status = U_ZERO_ERROR;
  icu::CaseMap::utf8ToLower("", 0, {s.data(), static_cast<std::int32_t>(s.size())}, sink, nullptr, status);
  return U_SUCCESS(status) ? out : asciiLowercased(s);
}

std::string withPlainSpaces(std::string_view s) {
  constexpr std::string_view noBreakSpace = "\u00A0";
  std::string out;
  std::size_t pos = 0;
  for (auto found = s.find(noBreakSpace); found != s.npos; found = s.find(noBreakSpace, pos)) {
    out.append(s, pos, found - pos) += ' ';
    pos = found + noBreakSpace.size();
  }
  return out.append(s, pos);
}

std::size_t wordCount(std::string_view s) {
  std::size_t count = 0;
  for (auto pos = skipForward(s, 0, true); pos < s.size(); pos = skipForward(s, pos, true)) {
    pos = skipForward(s, pos, false);
    ++count;
  }
  return count;
}

std::string_view firstWords(std::string_view s, std::size_t count) {
  std::size_t end = 0;
  for (; count > 0; --count) {
    const auto start = skipForward(s, end, true);
    if (start == s.size()) return s;
    end = skipForward(s, start, false);
  }
  return s.substr(0, end);
}

}  // namespace nimbletype::text
