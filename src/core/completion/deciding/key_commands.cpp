#include "core/completion/deciding/key_commands.h"

namespace nimbletype {
namespace {

constexpr KeyCombo escapeKey{key::escape, {}}, upKey{key::upArrow, {}}, downKey{key::downArrow, {}},
    tabKey{key::tab, {}}, returnKey{key::returnKey, {}};

bool usable(const std::optional<KeyCombo>& combo, bool tabAccepts) {
  return combo && (tabAccepts || combo->keyCode != key::tab);
}

}  // namespace

KeyCommand commandFor(const KeyPress& press, const Preferences& prefs, bool tabAccepts) {
  const KeyCombo combo = press.combo();
  const auto is = [&](const std::optional<KeyCombo>& stored) { return stored == combo; };
  if (is(prefs.acceptWordKey.get()) && usable(combo, tabAccepts)) return KeyCommand::acceptNext;
  if (is(prefs.acceptAllKey.get()) && usable(combo, tabAccepts)) return KeyCommand::acceptAll;
  if (combo == escapeKey) return KeyCommand::escape;
  if (is(prefs.triggerKey.get())) return KeyCommand::suggestNow;
  if (is(prefs.alternativesKey.get())) return KeyCommand::alternatives;
  if (is(prefs.toggleAppKey.get())) return KeyCommand::toggleApp;
  if (is(prefs.toggleGlobalKey.get())) return KeyCommand::toggleGlobal;
  return KeyCommand::none;
}

std::optional<int> rowStep(const KeyCombo& combo) {
  if (combo == upKey) return -1;
  if (combo == downKey) return 1;
  return std::nullopt;
}

std::vector<KeyCombo> listKeys() {
  return {upKey, downKey};
}

bool isPick(const KeyCombo& combo, const Preferences& prefs, bool tabAccepts, bool returnPicks) {
  if (combo == returnKey) return returnPicks;
  return (combo == tabKey || combo == prefs.acceptWordKey.get()) && usable(combo, tabAccepts);
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

std::optional<KeyCombo> hintKey(const Preferences& prefs, bool tabAccepts) {
  for (const auto& combo : {prefs.acceptWordKey.get(), prefs.acceptAllKey.get()})
    if (usable(combo, tabAccepts)) return combo;
  return std::nullopt;
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
