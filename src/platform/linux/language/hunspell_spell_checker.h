#pragma once
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "platform/language/spell_checker.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

class HunspellWorker;

// Checks in place, which takes hundredths of a millisecond. Loading the dictionary and looking up a
// correction take tens of milliseconds and happen on a thread of their own; until then nothing is misspelled
// and there is no correction.
class HunspellSpellChecker : public SpellChecker {
 public:
  // `language` such as "en_US" or "de"; empty means that of the user's locale. English where there is no
  // dictionary for it.
  HunspellSpellChecker(MainLoop& loop, std::string language);
  ~HunspellSpellChecker() override;

  bool isMisspelled(std::string_view word) override;
  std::optional<std::string> correction(std::string_view word) override;
  bool isLookingUp(std::string_view word) const override { return lookingUp_.contains(word); }
  void onFound(const std::function<void()>& found) override { found_ = found; }
  // Whether the dictionary has been loaded.
  bool isReady() const;

 private:
  void remember(const std::string& word, std::optional<std::string> correction);

  std::set<std::string, std::less<>> lookingUp_;
  std::map<std::string, std::optional<std::string>, std::less<>> corrections_;
  std::function<void()> found_;
  std::shared_ptr<HunspellSpellChecker*> self_;  // empty once destroyed, for answers still on their way
  std::unique_ptr<HunspellWorker> worker_;
};

}  // namespace nimbletype
