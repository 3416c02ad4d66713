#include "platform/linux/keys/x11_keymap.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <array>
#include <span>
#include <utility>

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

namespace {

constexpr std::uint16_t unknownKeys = 256;
constexpr std::uint8_t kernelOffset = 8;

// Kernel key code, product key code.
constexpr std::pair<std::uint8_t, std::uint8_t> places[] = {
    // clang-format off
    // the number row and what surrounds it
    {1, 53}, {41, 50}, {2, 18}, {3, 19}, {4, 20}, {5, 21}, {6, 23}, {7, 22}, {8, 26}, {9, 28}, {10, 25}, {11, 29},
    {12, 27}, {13, 24}, {124, 93}, {14, 51},
    // the three rows of letters
    {15, 48}, {16, 12}, {17, 13}, {18, 14}, {19, 15}, {20, 17}, {21, 16}, {22, 32}, {23, 34}, {24, 31}, {25, 35},
    {26, 33}, {27, 30}, {28, 36}, {58, 57}, {30, 0}, {31, 1}, {32, 2}, {33, 3}, {34, 5}, {35, 4}, {36, 38},
    {37, 40}, {38, 37}, {39, 41}, {40, 39}, {43, 42}, {42, 56}, {86, 10}, {44, 6}, {45, 7}, {46, 8}, {47, 9},
    {48, 11}, {49, 45}, {50, 46}, {51, 43}, {52, 47}, {53, 44}, {89, 94}, {54, 60},
    // the bottom row
    {29, 59}, {125, 55}, {56, 58}, {57, 49}, {100, 61}, {126, 54}, {127, 110}, {97, 62},
    // function keys; Print Screen, Scroll Lock and Pause sit where F13 to F15 do
    {59, 122}, {60, 120}, {61, 99}, {62, 118}, {63, 96}, {64, 97}, {65, 98}, {66, 100}, {67, 101}, {68, 109},
    {87, 103}, {88, 111}, {99, 105}, {70, 107}, {119, 113}, {186, 106}, {187, 64}, {188, 79}, {189, 80}, {190, 90},
    // the keys between, and the arrows
    {110, 114}, {102, 115}, {104, 116}, {111, 117}, {107, 119}, {109, 121}, {103, 126}, {105, 123}, {108, 125},
    {106, 124},
    // the keypad
    {69, 71}, {117, 81}, {98, 75}, {55, 67}, {71, 89}, {72, 91}, {73, 92}, {74, 78}, {75, 86}, {76, 87}, {77, 88},
    {78, 69}, {79, 83}, {80, 84}, {81, 85}, {96, 76}, {82, 82}, {83, 65}, {121, 95},
    // sound
    {113, 74}, {114, 73}, {115, 72}
    // clang-format on
};

constexpr auto toProduct = [] {
  std::array<std::uint16_t, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<std::uint16_t>(unknownKeys + i);
  for (auto [kernel, product] : places) table[kernel + kernelOffset] = product;
  return table;
}();

constexpr auto toX = [] {
  std::array<xcb_keycode_t, 128> table{};
  for (auto [kernel, product] : places) table[product] = static_cast<xcb_keycode_t>(kernel + kernelOffset);
  return table;
}();

std::span<const xcb_keysym_t> symbols(const xcb_get_keyboard_mapping_reply_t& map) {
  return {xcb_get_keyboard_mapping_keysyms(&map),
          static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(&map))};
}

}  // namespace

std::uint16_t productKeyCode(xcb_keycode_t keycode) {
  return toProduct[keycode];
}

std::optional<xcb_keycode_t> xKeycode(std::uint16_t productKeyCode) {
  if (productKeyCode >= unknownKeys && productKeyCode < 2 * unknownKeys)
    return static_cast<xcb_keycode_t>(productKeyCode - unknownKeys);
  if (productKeyCode >= toX.size() || toX[productKeyCode] == 0) return std::nullopt;
  return toX[productKeyCode];
}

ModifierSet X11Modifiers::modifierSet(std::uint16_t state) const {
  std::uint8_t bits = 0;
  if (state & command) bits |= ModifierSet::command;
  if (state & option) bits |= ModifierSet::option;
  if (state & XCB_MOD_MASK_CONTROL) bits |= ModifierSet::control;
  if (state & XCB_MOD_MASK_SHIFT) bits |= ModifierSet::shift;
  return {bits};
}

std::uint16_t X11Modifiers::mask(ModifierSet modifiers) const {
  unsigned bits = 0;
  if (modifiers.contains(ModifierSet::command)) bits |= command;
  if (modifiers.contains(ModifierSet::option)) bits |= option;
  if (modifiers.contains(ModifierSet::control)) bits |= XCB_MOD_MASK_CONTROL;
  if (modifiers.contains(ModifierSet::shift)) bits |= XCB_MOD_MASK_SHIFT;
  return static_cast<std::uint16_t>(bits);
}

std::vector<std::uint16_t> X11Modifiers::lockVariants(std::uint16_t mask) const {
  const auto with = [&](unsigned locks) { return static_cast<std::uint16_t>(mask | locks); };
  if (numLock == 0) return {mask, with(XCB_MOD_MASK_LOCK)};
  return {mask, with(XCB_MOD_MASK_LOCK), with(numLock), with(XCB_MOD_MASK_LOCK | unsigned{numLock})};
}

X11Modifiers X11Modifiers::read(xcb_connection_t* connection) {
  const xcb_setup_t* setup = xcb_get_setup(connection);
  const int count = setup->max_keycode - setup->min_keycode + 1;
  const auto modifierCookie = xcb_get_modifier_mapping(connection);
  const auto keyCookie =
      xcb_get_keyboard_mapping(connection, setup->min_keycode, static_cast<std::uint8_t>(count));
  const XcbReply<xcb_get_modifier_mapping_reply_t> modifiers(
      xcb_get_modifier_mapping_reply(connection, modifierCookie, nullptr));
  const XcbReply<xcb_get_keyboard_mapping_reply_t> keys(
      xcb_get_keyboard_mapping_reply(connection, keyCookie, nullptr));
  X11Modifiers result;
  if (!modifiers || !keys) return result;

  const auto maskOf = [&](std::initializer_list<xcb_keysym_t> wanted, std::uint16_t fallback) {
    const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(modifiers.get());
    const auto all = symbols(*keys);
    for (unsigned bit = 3; bit < 8; ++bit)  // Shift, Lock and Control come first
      for (unsigned i = 0; i < modifiers->keycodes_per_modifier; ++i) {
        const xcb_keycode_t code = codes[bit * modifiers->keycodes_per_modifier + i];
        if (code < setup->min_keycode) continue;
        const std::size_t first = std::size_t(code - setup->min_keycode) * keys->keysyms_per_keycode;
        for (xcb_keysym_t symbol : all.subspan(first, keys->keysyms_per_keycode))
          for (xcb_keysym_t want : wanted)
            if (symbol == want) return static_cast<std::uint16_t>(1u << bit);
      }
    return fallback;
  };
  result.command = maskOf({XKB_KEY_Super_L, XKB_KEY_Super_R}, result.command);
  result.option = maskOf({XKB_KEY_Alt_L, XKB_KEY_Alt_R}, result.option);
  result.numLock = maskOf({XKB_KEY_Num_Lock}, 0);
  return result;
}

}  // namespace nimbletype
