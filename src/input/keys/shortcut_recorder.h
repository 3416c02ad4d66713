#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "core/settings/preferences.h"
#include "input/keys/key_combo_display.h"

namespace nimbletype {

// A command that a shortcut can be recorded for.
enum class ShortcutCommand { acceptWord, acceptAll, trigger, alternatives, toggleApp, toggleGlobal };

// The command as people know it: "Suggest Now".
std::string_view commandName(ShortcutCommand command);
// Global commands listen all the time; the two that accept only while a suggestion shows.
bool isGlobal(ShortcutCommand command);
Setting<OptionalKeyCombo>& shortcutOf(ShortcutCommand command, Preferences& prefs);
const Setting<OptionalKeyCombo>& shortcutOf(ShortcutCommand command, const Preferences& prefs);

// Why the combo cannot become the command's shortcut, as a sentence for the user; none when it can.
std::optional<std::string> whyNot(const KeyCombo& combo, ShortcutCommand command, const Preferences& prefs);

// Records a shortcut: takes key presses until one of them ends it. Nothing is stored unless it is allowed.
class ShortcutRecorder {
 public:
  enum class State { recording, recorded, cleared, cancelled };

  ShortcutRecorder(ShortcutCommand command, Preferences& prefs) : command_(command), prefs_(prefs) {}

  // A press while recording: Escape cancels, Delete leaves the command without a shortcut, anything else is
  // recorded or refused. Afterwards, and for repeats, nothing happens.
  State press(const KeyPress& press);

  State state() const { return state_; }
  // What to show under the field: the hint, or why the last press was refused.
  const std::string& message() const { return message_; }

 private:
  State end(State state, OptionalKeyCombo combo);

  ShortcutCommand command_;
  Preferences& prefs_;
  State state_ = State::recording;
  std::string message_{recorderHint};
};

}  // namespace nimbletype
