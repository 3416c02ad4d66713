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
  alternatives,
  rowUp,
  rowDown,
  pick  // the chosen emoji
};

// What a key may act on where the caret is.
struct KeyContext {
  bool tabAccepts = true;  // false leaves Tab itself to the application
  bool listIsOpen = false;
  bool canChooseEmoji = false, returnPicks = false;
};

// What a key press asks for.
KeyCommand commandFor(const KeyPress& press, const Preferences& prefs, const KeyContext& context);

// The keys that move the highlight of a list.
std::vector<KeyCombo> listKeys();
// The keys of the emoji list; Escape alone while there is nothing to choose from.
std::vector<KeyCombo> pickerKeys(const Preferences& prefs, bool tabAccepts, bool canChoose, bool returnPicks);

// The first key that takes something: the one for the next word, else the one for all. None where no key
// does.
std::optional<KeyCombo> takingKey(const Preferences& prefs, bool tabAccepts);
// That key takes a fix: as this command, and with these keys while one is shown.
KeyCommand fixCommand(const Preferences& prefs, bool tabAccepts);
std::vector<KeyCombo> fixKeys(const Preferences& prefs, bool tabAccepts);

// The keys that could be taken while something is shown, and the shortcuts that can be taken at any time.
std::vector<KeyCombo> shownKeys(const Preferences& prefs, bool tabAccepts);
std::vector<KeyCombo> shortcutKeys(const Preferences& prefs);

}  // namespace nimbletype
