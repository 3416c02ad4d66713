#include "core/app/key_router.h"

#include <algorithm>

namespace nimbletype {

KeyRouter::KeyRouter(KeyTap& tap, CompletionEngine& engine, Preferences& prefs)
    : tap_(tap), engine_(engine), prefs_(prefs) {
  tap_.setHandler([this](const TapEvent& event) { return handle(event); });
  engine_.onShownChanged([this] { update(); });
  for (AnySetting* setting : prefs_.settings())
    if (setting->type() == SettingType::keyCombo)
      observations_.push_back(setting->observe([this] { update(); }));
  update();
}

bool KeyRouter::handle(const TapEvent& event) {
  if (const auto* press = std::get_if<KeyPress>(&event)) return pressed(*press);
  engine_.pointerPressed();
  return false;
}

// The repeats of a key that was taken stay ours, whatever is left to take; so it has to stay takeable.
bool KeyRouter::pressed(const KeyPress& press) {
  if (press.isRepeat) {
    const bool ours = held_.owns(press);
    if (ours) engine_.keyPressed(press);
    return ours;
  }
  const auto held = held_.ours();
  held_.pressed(press.combo(), engine_.keyPressed(press));
  if (held_.ours() != held) update();
  return held_.ours().has_value();
}

void KeyRouter::update() {
  std::vector<KeyCombo> keys = engine_.takeableKeys();
  if (const auto held = held_.ours(); held && std::ranges::count(keys, *held) == 0) keys.push_back(*held);
  tap_.setTakeable(keys);
  tap_.setShortcuts(shortcutKeys(prefs_));
}

}  // namespace nimbletype
