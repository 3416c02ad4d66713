#include "core/completion/showing/suggestion_display.h"

#include "core/completion/deciding/key_commands.h"
#include "core/completion/showing/ghost_builder.h"
#include "core/completion/showing/present_log.h"
#include "input/keys/key_combo_display.h"

namespace nimbletype {

void SuggestionDisplay::begin(bool tabAccepts) {
  hint_ = s_.prefs.showKeyHint.get() && s_.prefs.keyHintsShown.get() < keyHintLimit &&
          takingKey(s_.prefs, tabAccepts);
}

bool SuggestionDisplay::show(const FieldSnapshot& snapshot, std::string rest, bool tabAccepts) {
  auto content = ghostContent(snapshot, GhostContent::Kind::completion, std::move(rest), s_.prefs,
                              s_.screens.mainHeight());
  if (!content) return false;
  if (const auto key = takingKey(s_.prefs, tabAccepts); key && hint_) {
    content->hint = true;
    content->hintLabel = displayName(*key);
  }
  s_.log.log("engine", presentLogLine(*content, snapshot.before));
  s_.ghost.present(advance_.follow(*content));
  return true;
}

bool SuggestionDisplay::showFix(const FieldSnapshot& snapshot, std::string replacement) {
  const auto content = ghostContent(snapshot, GhostContent::Kind::correction, std::move(replacement),
                                    s_.prefs, s_.screens.mainHeight());
  if (content) s_.ghost.present(*content);
  return content.has_value();
}

void SuggestionDisplay::countHint() {
  if (hint_) s_.prefs.keyHintsShown.set(s_.prefs.keyHintsShown.get() + 1);
}

void SuggestionDisplay::hide() {
  advance_.forget();
  s_.ghost.hide();
}

}  // namespace nimbletype
