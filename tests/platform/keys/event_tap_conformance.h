#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "platform/keys/event_tap.h"

// What every `EventTap` must do. Instantiate with a default-constructible harness that has
//   EventTap& tap();
//   // The user presses these keys one after the other; answers which of them the application received.
//   std::vector<KeyCombo> press(const std::vector<KeyCombo>& keys);
//   void pointer();                    // the user clicks and the click has arrived
//   void postOwn(const KeyCombo& key); // the application posts a key itself and it has arrived
//   void settle();                     // what was set on the tap is in force
namespace nimbletype {

using Combos = std::vector<KeyCombo>;
inline constexpr KeyCombo tabKey{key::tab, {}}, escapeKey{key::escape, {}}, letterKey{0, {}},
    spaceShortcut{key::space, {ModifierSet::control | ModifierSet::option}};

template <typename Harness>
class EventTapConformance : public testing::Test {
 protected:
  EventTap& tap() { return harness_.tap(); }
  // Starts the tap with a handler that takes whatever `takes` lists.
  bool start() {
    return tap().start([this](const TapEvent& event) {
      const auto* press = std::get_if<KeyPress>(&event);
      if (!press) return ++pointers_, false;
      seen_.push_back(press->combo());
      return std::ranges::count(takes_, press->combo()) > 0;
    });
  }
  void setUp(const Combos& takeable, const Combos& shortcuts, const Combos& takes) {
    tap().setTakeable(takeable);
    tap().setShortcuts(shortcuts);
    takes_ = takes;
    harness_.settle();
  }

  Harness harness_;
  Combos seen_, takes_;
  int pointers_ = 0;
};

TYPED_TEST_SUITE_P(EventTapConformance);

TYPED_TEST_P(EventTapConformance, StartsOnceAndStops) {
  EXPECT_FALSE(this->tap().isRunning());
  EXPECT_TRUE(this->start());
  EXPECT_TRUE(this->tap().isRunning());
  EXPECT_TRUE(this->start());
  this->tap().stop();
  EXPECT_FALSE(this->tap().isRunning());
  EXPECT_TRUE(this->start());
  EXPECT_TRUE(this->tap().isRunning());
}

TYPED_TEST_P(EventTapConformance, SwallowsWhatCanBeTakenAndIsTaken) {
  ASSERT_TRUE(this->start());
  const KeyCombo tab = tabKey, escape = escapeKey, a = letterKey, shortcut = spaceShortcut;
  const struct {
    const char* why;
    Combos takeable, shortcuts, takes, pressed, received;
  } cases[] = {
      {"nothing can be taken", {}, {}, {}, {tab, a, escape}, {tab, a, escape}},
      {"taken", {tab}, {}, {tab}, {tab, a, tab}, {a}},
      {"asked about and left", {tab}, {}, {}, {tab, a}, {tab, a}},
      {"one taken, one left", {tab, escape}, {}, {escape}, {tab, escape, a}, {tab, a}},
      {"a shortcut, with nothing shown", {}, {shortcut}, {shortcut}, {shortcut, a}, {a}},
      {"a shortcut that is not wanted now", {}, {shortcut}, {}, {a, shortcut}, {a, shortcut}},
      {"no longer shown", {}, {}, {}, {tab, escape}, {tab, escape}},
  };
  for (const auto& c : cases) {
    this->setUp(c.takeable, c.shortcuts, c.takes);
    EXPECT_EQ(this->harness_.press(c.pressed), c.received) << c.why;
  }
}

TYPED_TEST_P(EventTapConformance, TellsOfEveryKeyOnceAndOfThePointer) {
  ASSERT_TRUE(this->start());
  const Combos pressed{tabKey, letterKey, escapeKey, letterKey};
  this->setUp({tabKey, escapeKey}, {}, {escapeKey});
  this->harness_.press(pressed);
  EXPECT_EQ(this->seen_, pressed);
  this->harness_.pointer();
  EXPECT_EQ(this->pointers_, 1);
}

TYPED_TEST_P(EventTapConformance, NeverSeesItsOwnEvents) {
  ASSERT_TRUE(this->start());
  this->setUp({tabKey}, {spaceShortcut}, {tabKey, letterKey});
  for (const KeyCombo& own : {tabKey, letterKey}) this->harness_.postOwn(own);
  EXPECT_THAT(this->seen_, testing::IsEmpty());
  EXPECT_THAT(this->harness_.press({tabKey}), testing::IsEmpty());
  EXPECT_EQ(this->seen_, Combos{tabKey});
}

TYPED_TEST_P(EventTapConformance, LetsEverythingPassOnceStopped) {
  ASSERT_TRUE(this->start());
  this->setUp({tabKey}, {spaceShortcut}, {tabKey, spaceShortcut});
  this->tap().stop();
  const Combos pressed{tabKey, spaceShortcut, letterKey};
  EXPECT_EQ(this->harness_.press(pressed), pressed);
  EXPECT_THAT(this->seen_, testing::IsEmpty());
}

REGISTER_TYPED_TEST_SUITE_P(EventTapConformance, StartsOnceAndStops, SwallowsWhatCanBeTakenAndIsTaken,
                            TellsOfEveryKeyOnceAndOfThePointer, NeverSeesItsOwnEvents,
                            LetsEverythingPassOnceStopped);

}  // namespace nimbletype
