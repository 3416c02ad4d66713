#include "overlay/lists/alternatives_model.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

bool isWordCharacter(std::string_view character) {
  constexpr std::string_view marks[] = {"'", "’", "-", "_"};
  return text::isLetter(character) || text::isDigit(character) ||
         std::ranges::find(marks, character) != std::ranges::end(marks);
}

bool startsWithWord(std::string_view trimmed) {
  const std::string_view first = text::firstCharacter(trimmed);
  return text::isLetter(first) || text::isDigit(first);
}

// A blank before it says that the word at the caret is whole.
bool completesWord(std::string_view continuation, std::string_view wordPrefix) {
  return !wordPrefix.empty() && !text::isWhitespace(text::firstCharacter(continuation)) &&
         startsWithWord(continuation);
}

std::string essence(std::string_view continuation) {
  std::string_view rest = text::trimmed(continuation);
  while (!rest.empty()) {
    const std::string_view last = text::lastCharacter(rest);
    if (text::isLetter(last) || text::isDigit(last) || last.size() > 1) break;
    rest.remove_suffix(last.size());
  }
  return text::lowercased(rest.empty() ? text::trimmed(continuation) : rest);
}

}  // namespace

std::string_view wordPrefixOf(std::string_view before) {
  std::size_t length = 0;
  while (length < before.size()) {
    const std::string_view last = text::lastCharacter(before.substr(0, before.size() - length));
    if (!isWordCharacter(last) || text::isUnspaced(last)) break;
    length += last.size();
  }
  return before.substr(before.size() - length);
}

std::string rowText(std::string_view continuation, std::string_view wordPrefix) {
  const std::string trimmed(text::trimmed(continuation));
  return completesWord(continuation, wordPrefix) ? std::string(wordPrefix) + trimmed : trimmed;
}

AlternativeChoice choiceOf(std::string_view continuation, std::string_view wordPrefix) {
  if (completesWord(continuation, wordPrefix))
    return {std::string(wordPrefix), rowText(continuation, wordPrefix)};
  return {"", std::string(text::trimmedEnd(continuation))};
}

std::vector<std::string> differentOnes(const std::vector<std::string>& continuations) {
  std::vector<std::string> different, essences;
  for (const std::string& each : continuations) {
    std::string core = essence(each);
    if (core.empty() || std::ranges::find(essences, core) != essences.end()) continue;
    essences.push_back(std::move(core));
    different.push_back(each);
  }
  return different;
}

}  // namespace nimbletype
