#pragma once
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "input/monitors/text_language.h"
#include "platform/language/spell_checker.h"

namespace nimbletype {

// A misspelled word and what to put in its place.
struct TypoFix {
  std::string word, correction;
  bool operator==(const TypoFix&) const = default;
};

// Whether a word is of the kind that is checked at all: at least 4 characters, all in lower case, and not the
// beginning of the product's own name.
bool isChecked(std::string_view word);

// Looks at the word just typed. Holds back in a text of another language than the checker's: there every word
// would look misspelled. Main thread only.
class TypoChecker {
 public:
  explicit TypoChecker(SpellChecker& checker) : checker_(checker) {}

  // The last word before the caret when it is misspelled. A view into `before`.
  std::optional<std::string_view> misspelledWord(std::string_view before);
  // The fix for that word; none while its correction is still being looked up.
  std::optional<TypoFix> fix(std::string_view before);
  // Whether the checker has nothing against a word, of whatever kind it is.
  bool knows(std::string_view word) { return !isUnknown(word); }
  // Whether it is against what no language has: where it knows of no dictionary, every word is right.
  bool hasDictionary() { return isUnknown("xqzvkjw"); }
  // Forgets what has been looked up so far: the dictionary has changed.
  void forget() {
    corrections_.clear();
    unknown_.clear();
  }
  // Called when a correction that was being looked up has been found.
  void onFound(const std::function<void()>& found) { checker_.onFound(found); }

 private:
  std::optional<std::string> correction(std::string_view word);
  WordCheck latestWords(std::string_view before);
  bool isUnknown(std::string_view word);

  SpellChecker& checker_;
  // Words already looked up; none for a word that has no correction.
  std::map<std::string, std::optional<std::string>, std::less<>> corrections_;
  std::map<std::string, bool, std::less<>> unknown_;  // what the checker said of the latest words
};

}  // namespace nimbletype
