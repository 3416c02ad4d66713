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
//   void settle(const Combos& takeable, const Combos& shortcuts);  // these are in force
namespace nimbletype {

using Combos = std::vector<KeyCombo>;
inline constexpr KeyCombo tabKey{key::tab, {}}, escapeKey{key::escape, {}}, letterKey{0, {}},
    spaceShortcut{key::space, {ModifierSet::control | ModifierSet::option}};

template <typename Harness>
struct EventTapConformance : testing::Test, Harness {
  // Starts the tap with a handler that takes whatever `taken` lists.
  bool start() {
    return this->tap().start([this](const TapEvent& event) {
      const auto* press = std::get_if<KeyPress>(&event);
      if (!press) return ++pointers, false;
      seen.push_back(press->combo());
      return std::ranges::count(taken, press->combo()) > 0;
    });
  }
  void offer(const Combos& takeable, const Combos& shortcuts, const Combos& takes) {
    this->tap().setTakeable(takeable);
    this->tap().setShortcuts(shortcuts);
    taken = takes;
    this->settle(takeable, shortcuts);
  }

  Combos seen, taken;
  int pointers = 0;
};
TYPED_TEST_SUITE_P(EventTapConformance);

TYPED_TEST_P(EventTapConformance, SwallowsWhatCanBeTakenAndIsTaken) {
  EXPECT_FALSE(this->tap().isRunning());
  ASSERT_TRUE(this->start());
  EXPECT_TRUE(this->tap().isRunning());
  const KeyCombo tab = tabKey, escape = escapeKey, a = letterKey, shortcut = spaceShortcut;
  const struct {
    const char* why;
    Combos takeable, shortcuts, takes, pressed, received;
  } cases[] = {
      {"nothing can be taken", {}, {}, {}, {tab, a, escape}, {tab, a, escape}},
      {"taken", {tab}, {}, {tab}, {tab, a, tab}, {a}},
      {"asked about and left", {tab}, {}, {}, {tab, a}, {tab, a}},
      {"one taken, one left", {tab, escape}, {}, {escape}, {tab, escape, a, a}, {tab, a, a}},
      {"a shortcut, with nothing shown", {}, {shortcut}, {shortcut}, {shortcut, a}, {a}},
      {"a shortcut that is not wanted now", {}, {shortcut}, {}, {a, shortcut}, {a, shortcut}},
      {"no longer shown", {}, {}, {}, {tab, escape}, {tab, escape}},
  };
  for (const auto& c : cases) {
    this->offer(c.takeable, c.shortcuts, c.takes);
    this->seen.clear();
    EXPECT_EQ(this->press(c.pressed), c.received) << c.why;
    if (c.shortcuts.empty()) {
      EXPECT_EQ(this->seen, c.pressed) << c.why << ": each key is told once";
    }
  }
  this->pointer();
  EXPECT_EQ(this->pointers, 1);
}

TYPED_TEST_P(EventTapConformance, NeverSeesItsOwnEvents) {
  ASSERT_TRUE(this->start());
  this->offer({tabKey}, {spaceShortcut}, {tabKey, letterKey});
  for (const KeyCombo& own : {tabKey, letterKey}) this->postOwn(own);
  EXPECT_THAT(this->seen, testing::IsEmpty());
  EXPECT_THAT(this->press({tabKey}), testing::IsEmpty());
  EXPECT_EQ(this->seen, Combos{tabKey});
}

TYPED_TEST_P(EventTapConformance, LetsEverythingPassOnceStopped) {
  ASSERT_TRUE(this->start());
  EXPECT_TRUE(this->start()) << "once is enough";
  this->offer({tabKey}, {spaceShortcut}, {tabKey, spaceShortcut});
  this->tap().stop();
  EXPECT_FALSE(this->tap().isRunning());
  const Combos pressed{tabKey, spaceShortcut, letterKey};
  EXPECT_EQ(this->press(pressed), pressed);
  EXPECT_THAT(this->seen, testing::IsEmpty());
  EXPECT_TRUE(this->start());
  EXPECT_TRUE(this->tap().isRunning());
}

REGISTER_TYPED_TEST_SUITE_P(EventTapConformance, SwallowsWhatCanBeTakenAndIsTaken, NeverSeesItsOwnEvents,
                            LetsEverythingPassOnceStopped);

}  // namespace nimbletype
