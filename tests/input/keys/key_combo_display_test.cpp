#include "input/keys/key_combo_display.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

constexpr std::uint8_t command = ModifierSet::command, option = ModifierSet::option,
                       control = ModifierSet::control, shift = ModifierSet::shift;

TEST(KeyComboDisplay, ShowsGlyphsAndName) {
  const struct {
    KeyCombo combo;
    const char* shown;
  } cases[] = {
      {{key::tab, {}}, "Tab"},
      {{key::space, {control | option}}, "⌃⌥Space"},
      {{0, {command | option | control | shift}}, "⌃⌥⇧⌘A"},
      {{key::aboveTab, {command}}, "⌘`"},
      {{key::leftArrow, {shift}}, "⇧←"},
      {{111, {}}, "F12"},
      {{52, {option}}, "⌥Key 52"},
      {{300, {}}, "Key 300"},
  };
  for (const auto& c : cases) EXPECT_EQ(displayName(c.combo), c.shown);
}

TEST(KeyComboDisplay, RecordsOnlyWhatNormalTypingDoesNotUse) {
  for (std::uint8_t bits = 0; bits < 16; ++bits) {
    const auto checked = checkRecordable({key::space, {bits}});
    EXPECT_EQ(checked.has_value(), bits != 0 && bits != shift) << int{bits};
    if (!checked) {
      EXPECT_EQ(checked.error(), "Add ⌃, ⌥ or ⌘ so normal typing still works.");
    }
  }
}

}  // namespace
}  // namespace nimbletype
