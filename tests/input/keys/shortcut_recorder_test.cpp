#include "input/keys/shortcut_recorder.h"

#include <gtest/gtest.h>

#include "input/keys/key_combo_display.h"
#include "platform/scripted/storage/memory_defaults_store.h"

namespace nimbletype {
namespace {

using State = ShortcutRecorder::State;
constexpr std::uint8_t command = ModifierSet::command, option = ModifierSet::option,
                       control = ModifierSet::control, shift = ModifierSet::shift;
constexpr const char* needsModifier = "Add ⌃, ⌥ or ⌘ so normal typing still works.";

KeyPress pressOf(const KeyCombo& combo) {
  return {combo.keyCode, combo.modifiers, "", false};
}

TEST(ShortcutRecorder, RecordsRefusesClearsAndCancels) {
  constexpr KeyCombo j{38, {control}}, shiftJ{38, {shift}}, f5{96, {}},
      trigger{key::space, {control | option}}, escape{key::escape, {}}, optionEscape{key::escape, {option}},
      deleteKey{key::deleteBack, {}}, tab{key::tab, {}};
  const struct {
    ShortcutCommand command;
    KeyCombo pressed;
    State state;
    OptionalKeyCombo stored;
    const char* message;
  } cases[] = {
      {ShortcutCommand::trigger, j, State::recorded, j, ""},
      {ShortcutCommand::trigger, trigger, State::recorded, trigger, ""},
      {ShortcutCommand::trigger, shiftJ, State::recording, trigger, needsModifier},
      {ShortcutCommand::trigger, f5, State::recording, trigger, needsModifier},
      {ShortcutCommand::trigger, escape, State::cancelled, trigger, ""},
      {ShortcutCommand::trigger, optionEscape, State::recorded, optionEscape, ""},
      {ShortcutCommand::trigger, deleteKey, State::cleared, std::nullopt, ""},
      {ShortcutCommand::toggleApp, trigger, State::recording, std::nullopt,
       "⌃⌥Space is already used for “Suggest Now”."},
      {ShortcutCommand::acceptAll, f5, State::recorded, f5, ""},
      {ShortcutCommand::acceptAll, tab, State::recording, KeyCombo{key::aboveTab, {}},
       "Tab is already used for “Take the next word”."},
  };
  for (const auto& c : cases) {
    MemoryDefaultsStore store;
    Preferences prefs(store);
    ShortcutRecorder recorder(c.command, prefs);
    EXPECT_EQ(recorder.message(), "Press to record a new shortcut. Escape cancels.");
    const std::string what =
        std::string(commandName(c.command)) + ", key " + std::to_string(c.pressed.keyCode);
    EXPECT_EQ(recorder.press(pressOf(c.pressed)), c.state) << what;
    EXPECT_EQ(shortcutOf(c.command, prefs).get(), c.stored) << what;
    EXPECT_EQ(recorder.message(), c.message) << what;
  }
}

TEST(ShortcutRecorder, GoesOnAfterARefusalAndEndsWithTheFirstThatFits) {
  MemoryDefaultsStore store;
  Preferences prefs(store);
  ShortcutRecorder recorder(ShortcutCommand::toggleGlobal, prefs);
  const KeyCombo p{35, {control}}, other{35, {option}};
  recorder.press(pressOf({35, {}}));
  KeyPress repeat = pressOf(other);
  repeat.isRepeat = true;
  EXPECT_EQ(recorder.press(repeat), State::recording);
  EXPECT_EQ(recorder.press(pressOf(p)), State::recorded);
  recorder.press(pressOf(other));
  EXPECT_EQ(prefs.toggleGlobalKey.get(), p);
}

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
      EXPECT_EQ(checked.error(), needsModifier);
    }
  }
}

}  // namespace
}  // namespace nimbletype
