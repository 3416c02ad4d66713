#include "platform/keys/dead_keys.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

TEST(DeadKeys, LeavesTheKeyAfterADeadKeyToTheApplication) {
  constexpr std::uint8_t option = ModifierSet::option, command = ModifierSet::command;
  const KeyPress tab{key::tab, {}, "\t", false};
  const struct {
    const char* why;
    KeyPress first;
    bool composed;
  } cases[] = {
      {"a letter", {0, {}, "a", false}, false},
      {"⌥E on an American keyboard", {14, {option}, "", false}, true},
      {"the key above Tab on a German keyboard", {key::aboveTab, {}, "", false}, true},
      {"a shortcut types nothing either", {0, {command}, "", false}, false},
      {"an arrow", {key::downArrow, {option}, "", false}, false},
      {"Tab that types nothing", {key::tab, {}, "", false}, false},
  };
  for (const auto& c : cases) {
    DeadKeys keys;
    EXPECT_FALSE(keys.pressed(c.first)) << c.why;
    EXPECT_EQ(keys.pressed(tab), c.composed) << c.why;
    EXPECT_FALSE(keys.pressed(tab)) << c.why;
    keys.pressed(c.first);
    keys.reset();
    EXPECT_FALSE(keys.pressed(tab)) << c.why << ", but it was taken";
  }
}

}  // namespace
}  // namespace nimbletype
