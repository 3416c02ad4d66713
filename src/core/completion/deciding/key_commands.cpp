#include "core/completion/deciding/key_commands.h"

namespace nimbletype {
namespace {

constexpr KeyCombo escapeKey{key::escape, {}}, upKey{key::upArrow, {}}, downKey{key::downArrow, {}},
    tabKey{key::tab, {}}, returnKey{key::returnKey, {}};

bool usable(const std::optional<KeyCombo>& combo, bool tabAccepts) {
  return combo && (tabAccepts || combo->keyCode != key::tab);
}

// Tab or the key that takes the next word picks from the emoji list, and Return where it may.
bool isPick(const KeyCombo& combo, const Preferences& prefs, bool tabAccepts, bool returnPicks) {
  if (combo == returnKey) return returnPicks;
  return (combo == tabKey || combo == prefs.acceptWordKey.get()) && usable(combo, tabAccepts);
}

}  // namespace

KeyCommand commandFor(const KeyPress& press, const Preferences& prefs, const KeyContext& context) {
  const KeyCombo combo = press.combo();
  if (context.listIsOpen || context.canChooseEmoji) {
    if (combo == upKey) return KeyCommand::rowUp;
    if (combo == downKey) return KeyCommand::rowDown;
  }
  if (context.canChooseEmoji && isPick(combo, prefs, context.tabAccepts, context.returnPicks))
    return KeyCommand::pick;
  const auto is = [&](const std::optional<KeyCombo>& stored) { return stored == combo; };
  const bool accepts = usable(combo, context.tabAccepts);
  if (is(prefs.acceptWordKey.get()) && accepts) return KeyCommand::acceptNext;
  if (is(prefs.acceptAllKey.get()) && accepts) return KeyCommand::acceptAll;
  if (combo == escapeKey) return KeyCommand::escape;
  if (is(prefs.triggerKey.get())) return KeyCommand::suggestNow;
  if (is(prefs.alternativesKey.get())) return KeyCommand::alternatives;
  if (is(prefs.toggleAppKey.get())) return KeyCommand::toggleApp;
  if (is(prefs.toggleGlobalKey.get())) return KeyCommand::toggleGlobal;
  return KeyCommand::none;
}

std::vector<KeyCombo> listKeys() {
  return {upKey, downKey};
}

std::vector<KeyCombo> pickerKeys(const Preferences& prefs, bool tabAccepts, bool canChoose,
                                 bool returnPicks) {
  std::vector<KeyCombo> keys{escapeKey};
  if (!canChoose) return keys;
  keys.insert(keys.end(), {upKey, downKey});
  for (const auto& combo : {std::optional(tabKey), prefs.acceptWordKey.get(), std::optional(returnKey)})
    if (combo && isPick(*combo, prefs, tabAccepts, returnPicks)) keys.push_back(*combo);
  return keys;
}

std::optional<KeyCombo> takingKey(const Preferences& prefs, bool tabAccepts) {
  for (const auto& combo : {prefs.acceptWordKey.get(), prefs.acceptAllKey.get()})
    if (usable(combo, tabAccepts)) return combo;
  return std::nullopt;
}

KeyCommand fixCommand(const Preferences& prefs, bool tabAccepts) {
  const auto key = takingKey(prefs, tabAccepts);
  if (!key) return KeyCommand::none;
  return key == prefs.acceptWordKey.get() ? KeyCommand::acceptNext : KeyCommand::acceptAll;
}

std::vector<KeyCombo> fixKeys(const Preferences& prefs, bool tabAccepts) {
  std::vector<KeyCombo> keys{escapeKey};
  if (const auto key = takingKey(prefs, tabAccepts)) keys.push_back(*key);
  return keys;
}

std::vector<KeyCombo> shownKeys(const Preferences& prefs, bool tabAccepts) {
  std::vector<KeyCombo> keys{escapeKey};
  for (const auto& combo : {prefs.acceptWordKey.get(), prefs.acceptAllKey.get()})
    if (usable(combo, tabAccepts)) keys.push_back(*combo);
  return keys;
}

std::vector<KeyCombo> shortcutKeys(const Preferences& prefs) {
  std::vector<KeyCombo> keys;
  for (const auto& combo : {prefs.triggerKey.get(), prefs.alternativesKey.get(), prefs.toggleAppKey.get(),
                            prefs.toggleGlobalKey.get()})
    if (combo) keys.push_back(*combo);
  return keys;
}

}  // namespace nimbletype
