#include "input/monitors/typo_checker.h"

#include "input/monitors/text_language.h"
#include "text/text.h"

namespace nimbletype {

namespace {

constexpr std::string_view productName = "nimbletype";
constexpr std::size_t shortestChecked = 4, mostRemembered = 1000;

}  // namespace

bool isChecked(std::string_view word) {
  return text::characterCount(word) >= shortestChecked && text::lowercased(word) == word &&
         !productName.starts_with(word);
}

std::optional<std::string_view> TypoChecker::misspelledWord(std::string_view before) {
  const std::string_view word = lastWord(before);
  if (!isChecked(word) || !checker_.isMisspelled(word)) return std::nullopt;
  if (isOtherLanguage(latestWords(before))) return std::nullopt;
  return word;
}

WordCheck TypoChecker::latestWords(std::string_view before) {
  WordCheck check;
  for (const std::string_view word : finishedWords(before)) {
    if (check.checked == wordsThatTell) break;
    if (!isChecked(word)) continue;
    ++check.checked;
    if (isUnknown(word)) ++check.unknown;
  }
  return check;
}

bool TypoChecker::isUnknown(std::string_view word) {
  if (const auto known = unknown_.find(word); known != unknown_.end()) return known->second;
  if (unknown_.size() >= mostRemembered) unknown_.clear();
  return unknown_.emplace(word, checker_.isMisspelled(word)).first->second;
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
