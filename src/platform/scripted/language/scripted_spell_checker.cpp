#include "platform/scripted/language/scripted_spell_checker.h"

namespace nimbletype {

std::optional<std::string> ScriptedSpellChecker::correction(std::string_view word) {
  const auto found = words.find(word);
  return found == words.end() ? std::nullopt : found->second;
}

}  // namespace nimbletype
