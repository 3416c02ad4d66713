#include "core/completion/offers/spelling.h"

#include "text/text.h"

namespace nimbletype {

bool Spelling::offerFix(const FieldSnapshot& snapshot) {
  if (!s_.prefs.suggestFixes.get()) return false;
  const auto fix = s_.typo.fix(snapshot.before);
  return fix && s_.offer.offerFix({snapshot.before, {fix->word, fix->correction}}, snapshot);
}

std::optional<std::string> Spelling::hold(const FieldSnapshot& snapshot) {
  if (!s_.prefs.hideOnTypo.get()) return std::nullopt;
  const auto word = s_.typo.misspelledWord(snapshot.before);
  if (!word) return std::nullopt;
  s_.log.log("engine", "held: the word being typed looks misspelled (" +
                           std::to_string(text::characterCount(*word)) + " letters)");
  return "This word looks misspelled";
}

}  // namespace nimbletype
