#include "input/keys/shortcut_recorder.h"

#include <array>

namespace nimbletype {

namespace {

using Member = Setting<OptionalKeyCombo> Preferences::*;

struct Command {
  ShortcutCommand command;
  std::string_view name;
  Member shortcut;
  bool global;
};

constexpr std::array commands = std::to_array<Command>({
    {ShortcutCommand::acceptWord, "Take the next word", &Preferences::acceptWordKey, false},
    {ShortcutCommand::acceptAll, "Take the whole suggestion", &Preferences::acceptAllKey, false},
    {ShortcutCommand::trigger, "Suggest Now", &Preferences::triggerKey, true},
    {ShortcutCommand::alternatives, "Other suggestions", &Preferences::alternativesKey, true},
    {ShortcutCommand::toggleApp, "Pause or resume in this app", &Preferences::toggleAppKey, true},
    {ShortcutCommand::toggleGlobal, "Pause or resume everywhere", &Preferences::toggleGlobalKey, true},
});

const Command& entry(ShortcutCommand command) {
  return commands[static_cast<std::size_t>(command)];
}

const Command* ownerOf(const KeyCombo& combo, ShortcutCommand besides, const Preferences& prefs) {
  for (const Command& command : commands)
    if (command.command != besides && (prefs.*command.shortcut).get() == combo) return &command;
  return nullptr;
}

}  // namespace

std::string_view commandName(ShortcutCommand command) {
  return entry(command).name;
}

bool isGlobal(ShortcutCommand command) {
  return entry(command).global;
}

Setting<OptionalKeyCombo>& shortcutOf(ShortcutCommand command, Preferences& prefs) {
  return prefs.*entry(command).shortcut;
}

const Setting<OptionalKeyCombo>& shortcutOf(ShortcutCommand command, const Preferences& prefs) {
  return prefs.*entry(command).shortcut;
}

std::optional<std::string> whyNot(const KeyCombo& combo, ShortcutCommand command, const Preferences& prefs) {
  if (isGlobal(command))
    if (auto checked = checkRecordable(combo); !checked) return std::move(checked.error());
  const Command* owner = ownerOf(combo, command, prefs);
  if (!owner) return std::nullopt;
  return displayName(combo) + " is already used for “" + std::string(owner->name) + "”.";
}

ShortcutRecorder::State ShortcutRecorder::press(const KeyPress& press) {
  if (state_ != State::recording || press.isRepeat) return state_;
  const KeyCombo combo = press.combo();
  Setting<OptionalKeyCombo>& shortcut = shortcutOf(command_, prefs_);
  if (combo == KeyCombo{key::escape, {}}) return end(State::cancelled, shortcut.get());
  if (combo == KeyCombo{key::deleteBack, {}}) return end(State::cleared, std::nullopt);
  if (auto reason = whyNot(combo, command_, prefs_)) {
    message_ = *std::move(reason);
    return state_;
  }
  return end(State::recorded, combo);
}

ShortcutRecorder::State ShortcutRecorder::end(State state, OptionalKeyCombo combo) {
  state_ = state;
  message_.clear();
  shortcutOf(command_, prefs_).set(combo);
  return state;
}

}  // namespace nimbletype
