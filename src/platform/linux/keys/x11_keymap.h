#pragma once
#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/keys/keys.h"

namespace nimbletype {

// X key codes (kernel code + 8) and the product's key codes name the same places on the keyboard. A key the
// Mac has no code for gets one beyond the Mac's: 256 and its X code.
std::uint16_t productKeyCode(xcb_keycode_t keycode);
std::optional<xcb_keycode_t> xKeycode(std::uint16_t productKeyCode);
// Keys that type nothing but change others, Caps Lock among them.
constexpr bool isModifierKey(std::uint16_t productKeyCode) {
  return productKeyCode >= 54 && productKeyCode <= 63;
}

// Which bits of an X modifier state stand for which modifier: Super is Command and Alt is Option, as on a
// keyboard of either kind. Shift and Control are fixed.
struct X11Modifiers {
  std::uint16_t command = XCB_MOD_MASK_4, option = XCB_MOD_MASK_1, numLock = XCB_MOD_MASK_2;

  ModifierSet modifierSet(std::uint16_t state) const;
  std::uint16_t mask(ModifierSet modifiers) const;
  // The states that differ only by locks, which never change what a shortcut means.
  std::vector<std::uint16_t> lockVariants(std::uint16_t mask) const;

  static X11Modifiers read(xcb_connection_t* connection);
};

}  // namespace nimbletype
