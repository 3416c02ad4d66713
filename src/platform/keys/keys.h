#pragma once
#include <compare>
#include <cstdint>
#include <string>
#include <variant>

namespace nimbletype {

// A set of modifier keys; the raw value is what is stored and logged.
struct ModifierSet {
  std::uint8_t rawValue = 0;
  static constexpr std::uint8_t command = 1, option = 2, control = 4, shift = 8;
  constexpr bool contains(std::uint8_t bits) const { return (rawValue & bits) == bits; }
  constexpr auto operator<=>(const ModifierSet&) const = default;
};

// Virtual key codes that the product names; the numbering is that of the Mac on every desktop.
namespace key {
inline constexpr std::uint16_t v = 9, tab = 48, space = 49, aboveTab = 50, deleteBack = 51, escape = 53,
                               returnKey = 36, leftArrow = 123, rightArrow = 124, downArrow = 125,
                               upArrow = 126;
}

// A stored shortcut.
struct KeyCombo {
  std::uint16_t keyCode = 0;
  ModifierSet modifiers;
  constexpr auto operator<=>(const KeyCombo&) const = default;
};

// One key-down event. `characters` is the text it produced: UTF-8, at most 8 UTF-16 units.
struct KeyPress {
  std::uint16_t keyCode = 0;
  ModifierSet modifiers;
  std::string characters;
  bool isRepeat = false;
  KeyCombo combo() const { return {keyCode, modifiers}; }
  bool operator==(const KeyPress&) const = default;
};

// A mouse button press or a scroll.
struct PointerPress {
  bool operator==(const PointerPress&) const = default;
};

using TapEvent = std::variant<KeyPress, PointerPress>;

}  // namespace nimbletype
