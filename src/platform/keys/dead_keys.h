#pragma once
#include <utility>

#include "platform/keys/keys.h"

namespace nimbletype {

// Whether the press is one of a key that types, but typed nothing: it waits for the next key.
constexpr bool isDeadKey(std::uint16_t keyCode, ModifierSet modifiers, bool typedNothing) {
  const bool types = keyCode <= key::aboveTab && keyCode != key::returnKey && keyCode != key::tab;
  return types && typedNothing && !(modifiers.rawValue & (ModifierSet::command | ModifierSet::control));
}

// Follows dead keys by what each key typed, for a desktop that tells no more.
class DeadKeys {
 public:
  // Takes the next press. True when it belongs to the dead key before it, and so to the application.
  bool pressed(const KeyPress& press) {
    const bool dead = isDeadKey(press.keyCode, press.modifiers, press.characters.empty());
    return std::exchange(pending_, dead);
  }
  // The last press never reached an application.
  void reset() { pending_ = false; }

 private:
  bool pending_ = false;
};

}  // namespace nimbletype
