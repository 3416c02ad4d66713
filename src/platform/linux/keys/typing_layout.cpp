#include "platform/linux/keys/typing_layout.h"

#include <xkbcommon/xkbcommon.h>

#include <algorithm>

#include "platform/linux/x11/xcb_support.h"
#include "platform/linux/x11/xcb_xkb.h"

namespace nimbletype {

namespace {

constexpr unsigned shiftBit = 0, lockBit = 1;

// Where the server lists the symbols of a group: two levels of each of two groups come first, the third and
// fourth level of each follow. Further groups are out of its reach.
std::size_t column(unsigned group, unsigned level) {
  return level < 2 ? 2 * group + level : 4 + 2 * group + (level - 2);
}

// None for keys that do not type by themselves: function keys, dead keys and the keypad, which depends on Num
// Lock.
char32_t characterOf(xcb_keysym_t symbol) {
  if (symbol == XKB_KEY_Return) return U'\n';
  if (symbol == XKB_KEY_Tab) return U'\t';
  if (symbol >= 0xfd00 && symbol <= 0xffff) return 0;
  const char32_t character = xkb_keysym_to_utf32(symbol);
  return character < 0x20 || character == 0x7f ? 0 : character;
}

bool isFree(std::span<const xcb_keysym_t> row) {
  return std::ranges::all_of(row, [](xcb_keysym_t symbol) { return symbol == XCB_NO_SYMBOL; });
}

// The modifier that reaches the third level, as a mask; 0 when the layout has none.
std::uint16_t thirdLevelMask(const KeySymbols& keys, const TypingLayout& layout) {
  for (unsigned bit = 0; bit < layout.modifierKey.size(); ++bit) {
    if (layout.modifierKey[bit] < keys.firstKey) continue;
    const std::size_t row = layout.modifierKey[bit] - keys.firstKey;
    if (row < keys.keyCount() && std::ranges::count(keys.row(row), XKB_KEY_ISO_Level3_Shift) > 0)
      return static_cast<std::uint16_t>(1u << bit);
  }
  return 0;
}

void addModifiers(TypingLayout& layout, std::span<const xcb_keycode_t> modifierKeys,
                  std::size_t perModifier) {
  for (unsigned bit = 0; bit < 8; ++bit)
    for (xcb_keycode_t key : modifierKeys.subspan(bit * perModifier, perModifier)) {
      if (key == 0) continue;
      if (layout.modifierKey[bit] == 0) layout.modifierKey[bit] = key;
      if (bit != lockBit) layout.modifierKeys.push_back(key);
    }
}

void addLevel(TypingLayout& layout, const KeySymbols& keys, std::size_t atColumn, std::uint16_t modifiers) {
  if (atColumn >= keys.columns) return;
  for (std::size_t row = 0; row < keys.keyCount(); ++row) {
    const char32_t character = characterOf(keys.row(row)[atColumn]);
    if (character) layout.characters.try_emplace(character, KeyStroke{keys.key(row), modifiers});
  }
}

}  // namespace

TypingLayout makeTypingLayout(const KeySymbols& keys, std::span<const xcb_keycode_t> modifierKeys,
                              unsigned perModifier, unsigned group) {
  TypingLayout layout;
  addModifiers(layout, modifierKeys, perModifier);
  for (std::size_t row = 0; row < keys.keyCount(); ++row)
    if (isFree(keys.row(row))) layout.freeKeys.push_back(keys.key(row));
  if (group > 1) return layout;
  constexpr std::uint16_t shift = 1u << shiftBit;
  const std::uint16_t third = thirdLevelMask(keys, layout);
  addLevel(layout, keys, column(group, 0), 0);
  addLevel(layout, keys, column(group, 1), shift);
  if (third == 0) return layout;
  addLevel(layout, keys, column(group, 2), third);
  addLevel(layout, keys, column(group, 3), third | shift);
  return layout;
}

TypingLayout readTypingLayout(xcb_connection_t* connection) {
  const xcb_setup_t* setup = xcb_get_setup(connection);
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto keyCookie = xcb_get_keyboard_mapping(connection, setup->min_keycode, count);
  const auto modifierCookie = xcb_get_modifier_mapping(connection);
  const auto stateCookie = xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD);
  const XcbReply<xcb_get_keyboard_mapping_reply_t> keys(
      xcb_get_keyboard_mapping_reply(connection, keyCookie, nullptr));
  const XcbReply<xcb_get_modifier_mapping_reply_t> modifiers(
      xcb_get_modifier_mapping_reply(connection, modifierCookie, nullptr));
  const XcbReply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(connection, stateCookie, nullptr));
  if (!keys || !modifiers) return {};
  const KeySymbols symbols{setup->min_keycode,
                           keys->keysyms_per_keycode,
                           {xcb_get_keyboard_mapping_keysyms(keys.get()),
                            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(keys.get()))}};
  const std::span<const xcb_keycode_t> modifierKeys(
      xcb_get_modifier_mapping_keycodes(modifiers.get()),
      static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(modifiers.get())));
  return makeTypingLayout(symbols, modifierKeys, modifiers->keycodes_per_modifier, state ? state->group : 0);
}

bool canType(const TypingLayout& layout, std::u16string_view text) {
  return std::ranges::all_of(text, [&](char16_t unit) {
    return unit != u'\n' && unit != u'\t' && layout.characters.contains(unit);
  });
}

TypingBatch planBatch(std::span<const Stroke> strokes, const TypingLayout& layout) {
  TypingBatch batch;
  std::map<char32_t, xcb_keycode_t> added;
  for (const Stroke& stroke : strokes) {
    if (const auto* key = std::get_if<KeyStroke>(&stroke)) {
      batch.strokes.push_back(*key);
      continue;
    }
    const char32_t character = std::get<char32_t>(stroke);
    if (const auto known = layout.characters.find(character); known != layout.characters.end()) {
      batch.strokes.push_back(known->second);
      continue;
    }
    if (!added.contains(character)) {
      if (batch.mappings.size() >= layout.freeKeys.size()) break;
      batch.mappings.emplace_back(layout.freeKeys[batch.mappings.size()], character);
      added[character] = batch.mappings.back().first;
    }
    batch.strokes.push_back({added[character], 0});
  }
  return batch;
}

}  // namespace nimbletype
