#include "platform/linux/keys/xcb_event_tap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/keys/xcb_event_poster.h"
#include "tests/platform/keys/event_tap_conformance.h"
#include "tests/platform/linux/keys/key_desk.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;

// However slow the machine, the answer is in time.
constexpr std::chrono::seconds patient{30};

// The relay passes messages on in order: once a key of the user's has come round, all before it has.
struct XcbTapHarness {
  KeyDesk desk;
  XcbEventTap xcb{desk.loop, desk.display.name(), installedKeyRelay(), patient};
  XcbEventPoster poster{desk.loop, [this] { return xcb.markWindow(); }, desk.display.name()};

  // Sees what the tests' handler sees, and sorts out the End key that only shows that all has arrived.
  struct Watched : EventTap {
    explicit Watched(XcbTapHarness& h) : harness(h) {}
    bool start(Handler handler) override {
      return harness.xcb.start([this, handler = std::move(handler)](const TapEvent& event) {
        const auto* press = std::get_if<KeyPress>(&event);
        if (press && press->keyCode == 119) return ++ends, false;
        if (!press) ++pointers;
        return handler(event);
      });
    }
    void stop() override { harness.xcb.stop(); }
    bool isRunning() const override { return harness.xcb.isRunning(); }
    void setTakeable(std::span<const KeyCombo> shown) override { harness.xcb.setTakeable(shown); }
    void setShortcuts(std::span<const KeyCombo> combos) override { harness.xcb.setShortcuts(combos); }
    XcbTapHarness& harness;
    int ends = 0, pointers = 0;
  } watched{*this};

  EventTap& tap() { return watched; }

  // Modifier keys are pressed on the way; what they tell the handler is not what the tests are about.
  Combos press(const Combos& pressed) {
    const int ends = watched.ends;
    const Combos arrived = desk.received(pressed);
    if (watched.isRunning())
      desk.waitUntil("the tap to tell of the End key", [&] { return watched.ends > ends; });
    return arrived;
  }
  void pointer() {
    desk.user.click();
    desk.waitUntil("the tap to tell of a click", [&] { return watched.pointers > 0; });
  }
  void postOwn(const KeyCombo& combo) {
    const std::size_t count = desk.window.keys.size();
    poster.begin();
    poster.press(combo.keyCode, combo.modifiers);
    poster.end();
    desk.waitUntil("a posted key to arrive", [&] { return desk.window.keys.size() > count; });
    press({});
  }
  void settle(const Combos& takeable, const Combos& shortcuts) {
    for (const KeyCombo& combo : {tabKey, escapeKey})
      desk.waitForGrab(combo, std::ranges::count(takeable, combo) > 0);
    desk.waitUntil("the shortcut to be grabbed or let go",
                   [&] { return desk.window.isGrabbedOnRoot(spaceShortcut) != shortcuts.empty(); });
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Xcb, EventTapConformance, XcbTapHarness);

struct XcbEventTapTest : testing::Test {
  // Starts with Tab takeable and taken.
  void start() {
    ASSERT_TRUE(tap.start([this](const TapEvent& event) {
      events.push_back(event);
      const auto* press = std::get_if<KeyPress>(&event);
      return press && press->keyCode == key::tab && takes;
    }));
    tap.setTakeable(std::vector{tabKey});
    desk.waitForGrab(tabKey);
  }
  int count(const TapEvent& event) const { return static_cast<int>(std::ranges::count(events, event)); }

  KeyDesk desk;
  XcbEventTap tap{desk.loop, desk.display.name(), installedKeyRelay(), patient};
  std::vector<TapEvent> events;
  bool takes = true;
  const TapEvent tabPress = KeyPress{key::tab, {}, "\t", false};
};

TEST_F(XcbEventTapTest, DoesNotStartWithoutDisplayOrRelay) {
  XcbEventTap noDisplay(desk.loop, ":4711"),
      noRelay(desk.loop, desk.display.name(), "/nowhere/nimbletype-keys");
  for (XcbEventTap* nowhere : {&noDisplay, &noRelay}) {
    EXPECT_FALSE(nowhere->start([](const TapEvent&) { return false; }));
    EXPECT_FALSE(nowhere->isRunning());
  }
}

TEST_F(XcbEventTapTest, KeepsFastTypingWholeAroundTabs) {
  start();
  for (const bool taken : {true, false}) {
    takes = taken;
    desk.window.text.clear();
    events.clear();
    std::string typed;
    for (int i = 0; i < 60; ++i) {
      desk.user.type("aB1 ");
      typed += takes ? "aB1 c" : "aB1 \tc";
      // The next letter goes down before Tab comes up, as with fast fingers.
      desk.user.down(key::tab);
      desk.user.down(8);
      desk.user.up(key::tab);
      desk.user.up(8);
    }
    desk.letKeysArrive();
    EXPECT_EQ(desk.window.text, typed);
    EXPECT_EQ(count(tabPress), 60);
    EXPECT_EQ(desk.window.focusChanges, 0);
  }
}

TEST_F(XcbEventTapTest, TellsTextModifiersAndRepeats) {
  start();
  desk.user.press(0, {ModifierSet::shift});
  desk.user.press(key::tab, {ModifierSet::command | ModifierSet::option});
  desk.user.down(key::tab);
  const KeyPress repeat{key::tab, {}, "\t", true};
  desk.waitUntil("a held Tab to repeat twice", [&] { return count(repeat) >= 2; });
  desk.user.up(key::tab);
  EXPECT_EQ(count(KeyPress{0, {ModifierSet::shift}, "A", false}), 1);
  EXPECT_EQ(count(KeyPress{key::tab, {3}, "\t", false}), 1);
  EXPECT_EQ(count(tabPress), 1);
  desk.letKeysArrive();
  EXPECT_THAT(desk.window.keys, ElementsAre(KeyCombo{0, {ModifierSet::shift}}, KeyCombo{key::tab, {3}}));
}

TEST_F(XcbEventTapTest, TakesKeysWhateverLocksAreOn) {
  start();
  const KeyCombo capsLock{57, {}}, numLock{71, {}};
  EXPECT_THAT(desk.received({capsLock, tabKey, numLock, tabKey}), testing::Not(testing::Contains(tabKey)));
}

// The accent's second key may be any, Tab included: to the application it says "the bare accent".
TEST_F(XcbEventTapTest, LeavesTheKeyAfterADeadKeyAlone) {
  constexpr xcb_keysym_t deadAcute = 0xfe51;
  constexpr KeyCombo q{12, {}};
  desk.window.nameKey(q.keyCode, deadAcute);
  start();
  // The new layout is read when there is time for it.
  desk.waitUntil("Tab after a dead key to be left", [&] {
    return desk.received({q, tabKey}) == Combos{q, tabKey};
  });
  EXPECT_THAT(desk.received({tabKey}), ElementsAre());
}

TEST_F(XcbEventTapTest, FollowsTheFocus) {
  start();
  KeyWindow other(desk.display.name());
  desk.waitUntil("Tab to be grabbed on the other window", [&] { return other.isGrabbed(tabKey); });
  EXPECT_FALSE(desk.window.isGrabbed(tabKey));
  desk.user.press(key::tab);
  desk.user.press(0);
  desk.waitUntil("the other window to receive the letter", [&] { return other.read(), !other.keys.empty(); });
  EXPECT_THAT(other.keys, ElementsAre(letterKey));
  desk.window.takeFocus();
  desk.waitForGrab(tabKey);
}

TEST(XcbEventTap, PassesAKeyOnWhenTheMainThreadIsBusy) {
  KeyDesk desk;
  XcbEventTap tap(desk.loop, desk.display.name());
  Combos asked;
  ASSERT_TRUE(tap.start([&](const TapEvent& event) {
    asked.push_back(std::get<KeyPress>(event).combo());
    return asked.back() == tabKey;
  }));
  tap.setTakeable(std::vector{tabKey});
  desk.waitForGrab(tabKey);
  desk.user.press(key::tab);
  desk.user.press(0);
  // Nothing runs the main loop here, as if a long computation did: both keys must arrive all the same.
  const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (desk.window.keys.size() < 2 && std::chrono::steady_clock::now() < giveUp) desk.window.read();
  EXPECT_THAT(desk.window.keys, ElementsAre(tabKey, letterKey));
  // The handler must not use the key that has been passed on; it hears of what came after.
  desk.waitUntil("the letter to be told", [&] { return !asked.empty(); });
  EXPECT_THAT(asked, ElementsAre(letterKey));
  // And the tap works as before.
  desk.waitUntil("Tab to be taken again", [&] { return desk.received({tabKey}).empty(); });
}

TEST_F(XcbEventTapTest, StartsAnotherRelayForOneThatIsStoppedOrKilled) {
  start();
  for (int signal : {SIGSTOP, SIGKILL}) {
    const auto relay = static_cast<pid_t>(tap.relayProcessID());
    ASSERT_EQ(kill(relay, signal), 0);
    EXPECT_THAT(desk.received({letterKey}), ElementsAre(letterKey));
    desk.waitUntil("another relay",
                   [&] { return tap.relayProcessID() != 0 && tap.relayProcessID() != relay; });
    desk.waitForGrab(tabKey);
    EXPECT_THAT(desk.received({tabKey}), ElementsAre());
  }
}

TEST_F(XcbEventTapTest, TellsOfClicksAndScrolling) {
  start();
  for (const int button : {1, 3}) desk.user.click(button);
  for (const bool up : {true, false}) desk.user.scroll(up);
  desk.waitUntil("four presses of the pointer", [&] { return count(PointerPress{}) >= 4; });
  desk.letKeysArrive();
  EXPECT_EQ(count(PointerPress{}), 4);
}

}  // namespace
}  // namespace nimbletype
