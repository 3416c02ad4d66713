#include "input/keys/key_combo_display.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nimbletype {

namespace {

using Name = std::pair<std::uint16_t, std::string_view>;

// Letters, digits and punctuation are named as the American keyboard labels them, whatever the layout: a key
// code stands for a place on the keyboard. Sorted by code.
constexpr std::array names =
    std::to_array<Name>({{0, "A"},         {1, "S"},         {2, "D"},         {3, "F"},
                         {4, "H"},         {5, "G"},         {6, "Z"},         {7, "X"},
                         {8, "C"},         {9, "V"},         {10, "§"},        {11, "B"},
                         {12, "Q"},        {13, "W"},        {14, "E"},        {15, "R"},
                         {16, "Y"},        {17, "T"},        {18, "1"},        {19, "2"},
                         {20, "3"},        {21, "4"},        {22, "6"},        {23, "5"},
                         {24, "="},        {25, "9"},        {26, "7"},        {27, "-"},
                         {28, "8"},        {29, "0"},        {30, "]"},        {31, "O"},
                         {32, "U"},        {33, "["},        {34, "I"},        {35, "P"},
                         {36, "Return"},   {37, "L"},        {38, "J"},        {39, "'"},
                         {40, "K"},        {41, ";"},        {42, "\\"},       {43, ","},
                         {44, "/"},        {45, "N"},        {46, "M"},        {47, "."},
                         {48, "Tab"},      {49, "Space"},    {50, "`"},        {51, "Delete"},
                         {53, "Escape"},   {64, "F17"},      {65, "Keypad ."}, {67, "Keypad *"},
                         {69, "Keypad +"}, {71, "Clear"},    {75, "Keypad /"}, {76, "Enter"},
                         {78, "Keypad -"}, {79, "F18"},      {80, "F19"},      {81, "Keypad ="},
                         {82, "Keypad 0"}, {83, "Keypad 1"}, {84, "Keypad 2"}, {85, "Keypad 3"},
                         {86, "Keypad 4"}, {87, "Keypad 5"}, {88, "Keypad 6"}, {89, "Keypad 7"},
                         {90, "F20"},      {91, "Keypad 8"}, {92, "Keypad 9"}, {93, "¥"},
                         {94, "_"},        {95, "Keypad ,"}, {96, "F5"},       {97, "F6"},
                         {98, "F7"},       {99, "F3"},       {100, "F8"},      {101, "F9"},
                         {103, "F11"},     {105, "F13"},     {106, "F16"},     {107, "F14"},
                         {109, "F10"},     {110, "Menu"},    {111, "F12"},     {113, "F15"},
                         {114, "Help"},    {115, "Home"},    {116, "Page Up"}, {117, "Forward Delete"},
                         {118, "F4"},      {119, "End"},     {120, "F2"},      {121, "Page Down"},
                         {122, "F1"},      {123, "←"},       {124, "→"},       {125, "↓"},
                         {126, "↑"}});
static_assert(std::ranges::is_sorted(names, {}, &Name::first));

}  // namespace

std::string modifierGlyphs(ModifierSet modifiers) {
  std::string glyphs;
  if (modifiers.contains(ModifierSet::control)) glyphs += "⌃";
  if (modifiers.contains(ModifierSet::option)) glyphs += "⌥";
  if (modifiers.contains(ModifierSet::shift)) glyphs += "⇧";
  if (modifiers.contains(ModifierSet::command)) glyphs += "⌘";
  return glyphs;
}

std::string keyName(std::uint16_t keyCode) {
  const auto found = std::ranges::lower_bound(names, keyCode, {}, &Name::first);
  if (found != names.end() && found->first == keyCode) return std::string(found->second);
  return "Key " + std::to_string(keyCode);
}

std::string displayName(const KeyCombo& combo) {
  return modifierGlyphs(combo.modifiers) + keyName(combo.keyCode);
}

std::expected<void, std::string> checkRecordable(const KeyCombo& combo) {
  constexpr std::uint8_t needed = ModifierSet::control | ModifierSet::option | ModifierSet::command;
  if (combo.modifiers.rawValue & needed) return {};
  return std::unexpected("Add ⌃, ⌥ or ⌘ so normal typing still works.");
}

}  // namespace nimbletype
