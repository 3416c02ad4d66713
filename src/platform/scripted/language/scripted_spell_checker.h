#pragma once
#include <functional>
#include <map>

#include "platform/language/spell_checker.h"

namespace nimbletype {

// Knows exactly the misspelled words it was given, each with its correction or none.
class ScriptedSpellChecker : public SpellChecker {
 public:
  bool isMisspelled(std::string_view word) override { return words.contains(word); }
  std::optional<std::string> correction(std::string_view word) override;

  std::map<std::string, std::optional<std::string>, std::less<>> words;
};

}  // namespace nimbletype
