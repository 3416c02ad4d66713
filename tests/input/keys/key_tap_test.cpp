#include "input/keys/key_tap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/keys/scripted_event_tap.h"
#include "platform/scripted/system/recording_system_log.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;

struct KeyTapTest : testing::Test {
  ScriptedEventTap desktop;
  RecordingSystemLog log;
  KeyTap tap{desktop, log};
};

TEST_F(KeyTapTest, RunsOnlyWhereTheDesktopAllowsIt) {
  desktop.allowed = false;
  EXPECT_FALSE(tap.start());
  EXPECT_FALSE(tap.isRunning());
  desktop.allowed = true;
  EXPECT_TRUE(tap.start());
  EXPECT_TRUE(tap.start());
  tap.stop();
  EXPECT_FALSE(tap.isRunning());
}

TEST_F(KeyTapTest, LogsTheKeysThatAcceptOrDismissAndNoOther) {
  constexpr std::uint8_t commandOption = ModifierSet::command | ModifierSet::option;
  const KeyPress tab{key::tab, {}, "\t", true}, above{key::aboveTab, {ModifierSet::shift}, "~", false},
      escape{key::escape, {commandOption}, "", false}, letter{0, {}, "a", false};
  tap.setTakeable(std::vector{tab.combo(), above.combo(), escape.combo()});
  ASSERT_TRUE(tap.start());
  EXPECT_FALSE(desktop.press(tab)) << "without a handler keys pass";
  log.lines.clear();
  std::vector<TapEvent> seen;
  tap.setHandler([&](const TapEvent& event) {
    seen.push_back(event);
    return event == TapEvent(tab);
  });
  EXPECT_TRUE(desktop.press(tab));
  EXPECT_FALSE(desktop.press(above));
  EXPECT_FALSE(desktop.press(escape));
  EXPECT_FALSE(desktop.press(letter));
  desktop.pointer();
  EXPECT_THAT(seen, ElementsAre(TapEvent(tab), TapEvent(above), TapEvent(escape), TapEvent(letter),
                                TapEvent(PointerPress{})));
  using Line = RecordingSystemLog::Line;
  EXPECT_THAT(log.lines,
              ElementsAre(Line{"input", "key 48 mods 0 used true"}, Line{"input", "key 50 mods 8 used false"},
                          Line{"input", "key 53 mods 3 used false"}));
}

}  // namespace
}  // namespace nimbletype
