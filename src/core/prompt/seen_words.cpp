#include "core/prompt/seen_words.h"

#include "text/text.h"

namespace nimbletype {
namespace {

bool isPartOfWord(std::string_view character) {
  return text::isLetter(character) || text::isDigit(character);
}

}  // namespace

SeenWords::SeenWords(std::initializer_list<std::string_view> texts) {
  for (const std::string_view text : texts) text_.append(text::lowercased(text)).append("\n");
}

bool SeenWords::contains(std::string_view word) const {
  const std::string wanted = text::lowercased(word);
  if (wanted.empty()) return false;
  const std::string_view all(text_);
  for (std::size_t at = all.find(wanted); at != std::string_view::npos; at = all.find(wanted, at + 1)) {
    const bool begins = !isPartOfWord(text::lastCharacter(all.substr(0, at)));
    const bool ends = !isPartOfWord(text::firstCharacter(all.substr(at + wanted.size())));
    if (begins && ends) return true;
  }
  return false;
}

}  // namespace nimbletype
