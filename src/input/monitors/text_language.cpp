#include "input/monitors/text_language.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {

namespace {

constexpr std::size_t longestWord = 256, longestPart = 1024;  // bytes
constexpr std::size_t fewestWords = 4;

bool belongsToWord(std::string_view character) {
  return text::isLetter(character) || character == "'" || character == "’";
}

// The end of a text in whole code points.
std::string_view tail(std::string_view s, std::size_t bytes) {
  if (s.size() <= bytes) return s;
  s.remove_prefix(s.size() - bytes);
  while (!s.empty() && (static_cast<unsigned char>(s.front()) & 0xC0) == 0x80) s.remove_prefix(1);
  return s;
}

}  // namespace

std::string_view lastWord(std::string_view before) {
  const std::string_view end = tail(before, longestWord);
  const auto characters = text::characters(end);
  const auto wordStart = std::find_if_not(characters.rbegin(), characters.rend(), belongsToWord);
  if (wordStart == characters.rbegin()) return {};
  return end.substr(static_cast<std::size_t>(wordStart.base()->data() - end.data()));
}

std::vector<std::string_view> finishedWords(std::string_view before) {
  const auto characters = text::characters(tail(before, longestPart));
  std::vector<std::string_view> words;
  auto end = std::find_if_not(characters.rbegin(), characters.rend(), belongsToWord);
  while (true) {
    const auto last = std::find_if(end, characters.rend(), belongsToWord);
    const auto first = std::find_if_not(last, characters.rend(), belongsToWord);
    // The part may begin inside a word.
    if (first == characters.rend() && before.size() > longestPart) return words;
    if (last == characters.rend()) return words;
    const char* start = first.base()->data();
    words.emplace_back(start, last->data() + last->size());
    end = first;
  }
}

bool isOtherLanguage(WordCheck latest) {
  return latest.checked >= fewestWords && 2 * latest.unknown > latest.checked;
}

}  // namespace nimbletype
