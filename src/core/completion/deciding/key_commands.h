#pragma once
#include <optional>
#include <vector>

#include "core/settings/preferences.h"
#include "platform/keys/keys.h"

namespace nimbletype {

enum class KeyCommand {
  none,
  acceptNext,
  acceptAll,
  escape,
  suggestNow,
  toggleApp,
  toggleGlobal,
  alternatives
};

// What a key press asks for. `tabAccepts` false leaves Tab itself to the application.
KeyCommand commandFor(const KeyPress& press, const Preferences& prefs, bool tabAccepts);

// By how many rows a key moves the highlight of a list; none for a key that does not.
std::optional<int> rowStep(const KeyCombo& combo);
std::vector<KeyCombo> listKeys();

// Whether a key picks from the emoji list: Tab or the key that takes the next word, and Return where it may.
bool isPick(const KeyCombo& combo, const Preferences& prefs, bool tabAccepts, bool returnPicks);
// The keys of the emoji list; Escape alone while there is nothing to choose from.
std::vector<KeyCombo> pickerKeys(const Preferences& prefs, bool tabAccepts, bool canChoose, bool returnPicks);

// The key to tell newcomers of: the first that takes something of a suggestion; none where no key does.
std::optional<KeyCombo> hintKey(const Preferences& prefs, bool tabAccepts);

// The keys that could be taken while something is shown, and the shortcuts that can be taken at any time.
std::vector<KeyCombo> shownKeys(const Preferences& prefs, bool tabAccepts);
std::vector<KeyCombo> shortcutKeys(const Preferences& prefs);

}  // namespace nimbletype
