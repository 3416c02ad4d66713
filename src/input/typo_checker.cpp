#include "input/typo_checker.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {

namespace {

constexpr std::string_view productName = "nimbletype";
constexpr std::size_t shortestChecked = 4, mostRemembered = 1000;

bool belongsToWord(std::string_view character) {
  return text::isLetter(character) || character == "'" || character == "’";
}

// The end of a text, long enough for any word, so that a long text costs no more than a short one.
std::string_view tail(std::string_view s) {
  constexpr std::size_t bytes = 256;
  if (s.size() <= bytes) return s;
  s.remove_prefix(s.size() - bytes);
  while (!s.empty() && (static_cast<unsigned char>(s.front()) & 0xC0) == 0x80) s.remove_prefix(1);
  return s;
}

}  // namespace

std::string_view lastWord(std::string_view before) {
  const std::string_view end = tail(before);
  const auto characters = text::characters(end);
  const auto wordStart = std::find_if_not(characters.rbegin(), characters.rend(), belongsToWord);
  if (wordStart == characters.rbegin()) return {};
  return end.substr(static_cast<std::size_t>(wordStart.base()->data() - end.data()));
}

bool isChecked(std::string_view word) {
  return text::characterCount(word) >= shortestChecked && text::lowercased(word) == word &&
         !productName.starts_with(word);
}

std::optional<std::string_view> TypoChecker::misspelledWord(std::string_view before) {
  const std::string_view word = lastWord(before);
  if (!isChecked(word) || !checker_.isMisspelled(word)) return std::nullopt;
  return word;
}

std::optional<TypoFix> TypoChecker::fix(std::string_view before) {
  const auto word = misspelledWord(before);
  if (!word) return std::nullopt;
  auto better = correction(*word);
  if (!better || *better == *word) return std::nullopt;
  return TypoFix{std::string(*word), std::move(*better)};
}

std::optional<std::string> TypoChecker::correction(std::string_view word) {
  if (const auto known = corrections_.find(word); known != corrections_.end()) return known->second;
  auto found = checker_.correction(word);
  if (checker_.isLookingUp(word)) return std::nullopt;
  if (corrections_.size() >= mostRemembered) corrections_.clear();
  corrections_.emplace(word, found);
  return found;
}

}  // namespace nimbletype
