#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Text as people count it. Strings are UTF-8; "characters" are user-perceived characters (grapheme clusters);
// UTF-16 units are what Accessibility and typed chunks count. Malformed input is never an error: it behaves
// as U+FFFD.
namespace nimbletype::text {

// UTF-16
std::u16string toUtf16(std::string_view utf8);
std::string toUtf8(std::u16string_view utf16);  // a lone surrogate becomes U+FFFD
std::size_t utf16Length(std::string_view utf8);

// User-perceived characters. The views returned are parts of the argument.
std::size_t characterCount(std::string_view s);
std::vector<std::string_view> characters(std::string_view s);
std::string_view firstCharacters(std::string_view s, std::size_t count);
std::string_view lastCharacters(std::string_view s, std::size_t count);
std::string_view dropFirst(std::string_view s, std::size_t count);
std::string_view firstCharacter(std::string_view s);  // empty for an empty string
std::string_view lastCharacter(std::string_view s);
// The first `count` characters followed by "…" when there are more.
std::string clipped(std::string_view s, std::size_t count);

// Properties of one character, decided by its first code point.
bool isWhitespace(std::string_view character);  // spaces, tabs, no-break spaces and line breaks
bool isLineBreak(std::string_view character);   // U+000A to U+000D, U+0085, U+2028, U+2029
bool isLetter(std::string_view character);
bool isDigit(std::string_view character);
// A character of a script that puts no blanks between words, such as Chinese, Japanese or Thai.
bool isUnspaced(std::string_view character);

// Whitespace, line breaks included, cut from both ends, the start or the end.
std::string_view trimmed(std::string_view s);
std::string_view trimmedStart(std::string_view s);
std::string_view trimmedEnd(std::string_view s);
bool isBlank(std::string_view s);

std::string lowercased(std::string_view s);  // independent of the locale
// U+00A0 turned into an ordinary space.
std::string withPlainSpaces(std::string_view s);
// Words are runs of non-whitespace. `firstWords` keeps leading whitespace and ends with the last word it
// counts; text with fewer words comes back whole.
std::size_t wordCount(std::string_view s);
std::string_view firstWords(std::string_view s, std::size_t count);

// Runs of letters and digits; in scripts without blanks between words, the words that a dictionary finds.
std::vector<std::string_view> words(std::string_view s);

bool isValidUtf8(std::string_view s);
std::string repaired(std::string_view s);  // malformed sequences replaced by U+FFFD

}  // namespace nimbletype::text
