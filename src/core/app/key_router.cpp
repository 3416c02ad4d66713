#include "core/app/key_router.h"

#include <algorithm>

namespace nimbletype {

KeyRouter::KeyRouter(KeyTap& tap, CompletionEngine& engine, const Preferences& prefs)
    : tap_(tap), engine_(engine), prefs_(prefs) {
  tap_.setHandler([this](const TapEvent& event) { return handle(event); });
  engine_.onShownChanged([this] { update(); });
  update();
}

bool KeyRouter::handle(const TapEvent& event) {
  if (const auto* press = std::get_if<KeyPress>(&event)) return pressed(*press);
  engine_.pointerPressed();
  return false;
}

// The repeats of a key that was taken stay ours, whatever is left to take. So it has to stay takeable,
// without a moment in between in which a repeat could slip through.
bool KeyRouter::pressed(const KeyPress& press) {
  if (press.isRepeat) {
    const bool ours = held_.owns(press);
    if (ours) engine_.keyPressed(press);
    return ours;
  }
  const bool wasHeld = held_.ours().has_value(), mayTake = std::ranges::count(takeable_, press.combo()) > 0;
  held_.pressed(press.combo(), mayTake);
  const bool taken = engine_.keyPressed(press);
  held_.pressed(press.combo(), taken);
  if (wasHeld || mayTake) update();
  return taken;
}

void KeyRouter::update() {
  const std::vector<KeyCombo> shortcuts = shortcutKeys(prefs_);
  takeable_ = engine_.takeableKeys();
  const auto held = held_.ours();
  if (held && std::ranges::count(takeable_, *held) + std::ranges::count(shortcuts, *held) == 0)
    takeable_.push_back(*held);
  tap_.setTakeable(takeable_);
  tap_.setShortcuts(shortcuts);
}

}  // namespace nimbletype
