#pragma once
#include <optional>
#include <string>

#include "core/completion/offers/offer.h"
#include "input/monitors/typo_checker.h"

namespace nimbletype {

// What a misspelled word brings about: a fix to be taken, and a suggestion held back.
class Spelling {
 public:
  struct Services {
    const Preferences& prefs;
    TypoChecker& typo;
    Offer& offer;
    SystemLog& log;
  };

  explicit Spelling(const Services& services) : s_(services) {}
  // Whether a fix of the word before the caret is shown now.
  bool offerFix(const FieldSnapshot& snapshot);
  // Why nothing is to be asked for here; none where the user lets misspelled words pass.
  std::optional<std::string> hold(const FieldSnapshot& snapshot);

 private:
  Services s_;
};

}  // namespace nimbletype
