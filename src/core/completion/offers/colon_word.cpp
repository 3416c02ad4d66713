#include "core/completion/offers/colon_word.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::size_t longestWord = 40, longestEmoticon = 4;  // characters
constexpr std::string_view openingBrackets[] = {"(",  "[", "{", "（", "［", "「", "『",
                                                "【", "«", "“", "„",  "¿",  "¡"};

bool isLetterOrDigit(std::string_view character) {
  return text::isLetter(character) || text::isDigit(character);
}

bool isWordCharacter(std::string_view character) {
  return isLetterOrDigit(character) || character == "_" || character == "+" || character == "-";
}

bool isPicture(std::string_view character) {
  if (character.empty()) return false;
  UChar32 first = 0;
  int at = 0;
  U8_NEXT_OR_FFFD(character.data(), at, static_cast<int>(character.size()), first);
  return u_hasBinaryProperty(first, UCHAR_EXTENDED_PICTOGRAPHIC) != 0;
}

std::string_view wordAtEnd(std::string_view before) {
  std::size_t length = 0;
  for (std::size_t count = 0; count <= longestWord; ++count) {
    const std::string_view last = text::lastCharacter(before.substr(0, before.size() - length));
    if (!isWordCharacter(last)) break;
    length += last.size();
  }
  return before.substr(before.size() - length);
}

// "+" and "-" alone may as well begin ":-)".
bool isName(std::string_view word) {
  return std::ranges::any_of(text::characters(word), isLetterOrDigit) &&
         text::characterCount(word) <= longestWord;
}

bool mayStart(std::string_view previous, bool withWord) {
  return previous.empty() || text::isWhitespace(previous) || text::isLineBreak(previous) ||
         std::ranges::find(openingBrackets, previous) != std::ranges::end(openingBrackets) ||
         (withWord && isPicture(previous));
}

std::optional<ColonWord> openColonWord(std::string_view before) {
  const std::string_view word = wordAtEnd(before);
  const std::string_view lead = before.substr(0, before.size() - word.size());
  if (!lead.ends_with(':') || (!word.empty() && !isName(word))) return std::nullopt;
  const std::string_view previous = text::lastCharacter(lead.substr(0, lead.size() - 1));
  if (!mayStart(previous, !word.empty())) return std::nullopt;
  return ColonWord{before.substr(lead.size() - 1), word, false};
}

}  // namespace

std::optional<ColonWord> colonWord(std::string_view before) {
  if (const auto open = openColonWord(before)) return open;
  if (!before.ends_with(':')) return std::nullopt;
  const auto inner = openColonWord(before.substr(0, before.size() - 1));
  if (!inner || inner->word.empty()) return std::nullopt;
  return ColonWord{before.substr(before.size() - inner->text.size() - 1), inner->word, true};
}

std::optional<std::string_view> emoticonCandidate(std::string_view before) {
  std::size_t length = 0;
  for (std::size_t count = 0; count <= longestEmoticon; ++count) {
    const std::string_view last = text::lastCharacter(before.substr(0, before.size() - length));
    if (last.empty() || text::isWhitespace(last))
      return count > 0 ? std::optional(before.substr(before.size() - length)) : std::nullopt;
    length += last.size();
  }
  return std::nullopt;
}

}  // namespace nimbletype
