#pragma once
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace nimbletype {

// One press of a key, with exactly these modifiers.
struct KeyStroke {
  xcb_keycode_t keycode = 0;
  std::uint16_t modifiers = 0;
  bool operator==(const KeyStroke&) const = default;
};

// What the keyboard types at this moment.
struct TypingLayout {
  std::map<char32_t, KeyStroke> characters;    // of the active layout; line feed and tab are keys as well
  std::vector<xcb_keycode_t> freeKeys;         // keys that mean nothing
  std::array<xcb_keycode_t, 8> modifierKey{};  // one key for each modifier bit, 0 where there is none
  std::vector<xcb_keycode_t> modifierKeys;     // all keys that are modifiers while they are held
};

// The symbols of all keys, row by row, as the server lists them.
struct KeySymbols {
  xcb_keycode_t firstKey = 0;
  std::size_t columns = 0;
  std::span<const xcb_keysym_t> symbols;

  std::size_t keyCount() const { return columns == 0 ? 0 : symbols.size() / columns; }
  xcb_keycode_t key(std::size_t row) const { return static_cast<xcb_keycode_t>(firstKey + row); }
  std::span<const xcb_keysym_t> row(std::size_t row) const { return symbols.subspan(row * columns, columns); }
};

// `modifierKeys` has `perModifier` key codes for each of the eight modifiers.
TypingLayout makeTypingLayout(const KeySymbols& keys, std::span<const xcb_keycode_t> modifierKeys,
                              unsigned perModifier, unsigned group);
TypingLayout readTypingLayout(xcb_connection_t* connection);

// Whether this is a line that needs no other characters than those of the layout. Return and Tab count as
// something else: to many applications they are commands.
bool canType(const TypingLayout& layout, std::u16string_view text);

// Something to type: a key, or a character on whatever key it is.
using Stroke = std::variant<KeyStroke, char32_t>;

struct TypingBatch {
  std::vector<std::pair<xcb_keycode_t, char32_t>> mappings;  // to be made before
  std::vector<KeyStroke> strokes;
  bool operator==(const TypingBatch&) const = default;
};

// As many strokes, from the start, as can be typed without giving any key a second meaning. Characters that
// the layout does not have are put on free keys, each on one of its own.
TypingBatch planBatch(std::span<const Stroke> strokes, const TypingLayout& layout);

}  // namespace nimbletype
