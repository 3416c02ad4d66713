#include "core/app/key_router.h"

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
  if (const auto* press = std::get_if<KeyPress>(&event)) return engine_.keyPressed(*press);
  engine_.pointerPressed();
  return false;
}

void KeyRouter::update() {
  tap_.setTakeable(engine_.takeableKeys());
  tap_.setShortcuts(shortcutKeys(prefs_));
}

}  // namespace nimbletype
