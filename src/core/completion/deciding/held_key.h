#pragma once
#include <optional>

#include "platform/keys/keys.h"

namespace nimbletype {

// A key that is held down stays with whoever took its first press, until it is pressed anew.
class HeldKey {
 public:
  // The first press of a hold was answered.
  void pressed(const KeyCombo& combo, bool taken) { held_ = Hold{combo, taken}; }
  // Whether a repeat is ours. A hold that nobody saw begin is the application's.
  bool owns(const KeyPress& repeat) const {
    return held_ && held_->taken && held_->combo.keyCode == repeat.keyCode;
  }
  // What has to stay takeable, so that its repeats come to us.
  std::optional<KeyCombo> ours() const {
    return held_ && held_->taken ? std::optional(held_->combo) : std::nullopt;
  }

 private:
  struct Hold {
    KeyCombo combo;
    bool taken = false;
  };
  std::optional<Hold> held_;
};

}  // namespace nimbletype
