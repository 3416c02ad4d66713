#pragma once
#include <cstddef>
#include <string_view>
#include <vector>

namespace nimbletype {

// The run of letters and apostrophes at the end of the text.
std::string_view lastWord(std::string_view before);
// The latest finished words of the text, the latest first: the word at its very end, which may still grow, is
// not among them. Only so many, and only from the text's last part, so that a long text costs no more.
std::vector<std::string_view> finishedWords(std::string_view before);

// How many of the latest words a spell checker was asked about, and how many of them it does not know.
struct WordCheck {
  std::size_t checked = 0, unknown = 0;
};
// So many words tell the language of a text.
inline constexpr std::size_t wordsThatTell = 12;
// Whether the text is more likely in another language than full of mistakes. Few words tell nothing.
bool isOtherLanguage(WordCheck latest);

}  // namespace nimbletype
