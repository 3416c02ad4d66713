#pragma once
#include <vector>

#include "core/completion/completion_engine.h"
#include "core/completion/deciding/held_key.h"
#include "input/keys/key_tap.h"

namespace nimbletype {

// Between tap and engine: hands events to the engine and keeps the tap told of the keys that can be taken.
class KeyRouter {
 public:
  KeyRouter(KeyTap& tap, CompletionEngine& engine, const Preferences& prefs);
  // The tap is to know of other shortcuts.
  void keysChanged() { update(); }

 private:
  bool handle(const TapEvent& event);
  bool pressed(const KeyPress& press);
  void update();

  KeyTap& tap_;
  CompletionEngine& engine_;
  const Preferences& prefs_;
  HeldKey held_;
  std::vector<KeyCombo> takeable_;  // as the tap was told
};

}  // namespace nimbletype
