#include "platform/linux/keys/xcb_event_poster.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/keys/event_poster_conformance.h"
#include "tests/platform/linux/keys/key_desk.h"
#include "text/text.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;

struct XcbEventPosterTest : testing::Test {
  void type(std::string_view text) {
    ASSERT_TRUE(poster.begin());
    poster.type(text::toUtf16(text));
    poster.end();
  }
  void expectText(const std::string& text) {
    desk.waitUntil("'" + text + "' to be typed",
                   [&] { return !poster.isInjecting() && desk.window.text.size() >= text.size(); });
    EXPECT_EQ(desk.window.text, text);
    desk.window.text.clear();
  }
  std::size_t freeKeys() const { return readTypingLayout(observer.get()).freeKeys.size(); }

  KeyDesk desk;
  XcbConnection observer = connectToDisplay(desk.display.name());
  XcbEventPoster poster{desk.loop, [] { return 0u; }, desk.display.name()};
};

TEST_F(XcbEventPosterTest, TypesWhatTheLayoutHasAndWhatItLacks) {
  EXPECT_TRUE(poster.mayPost());
  for (const char* text : {"Hello, World! (42%)", "naïve café — “quoted” 👍🏽", "é", "日本語", "a\tb"}) {
    type(text);
    expectText(text);
  }
}

TEST_F(XcbEventPosterTest, GivesKeysBackAfterwards) {
  const std::size_t before = freeKeys();
  ASSERT_GT(before, 4u);
  type("äöü");
  expectText("äöü");
  EXPECT_EQ(freeKeys(), before - 3);
  desk.waitUntil("the keys to be free again", [&] { return freeKeys() == before; });
  {
    XcbEventPoster passing(desk.loop, nullptr, desk.display.name());
    ASSERT_TRUE(passing.begin());
    passing.type(u"ß");
    passing.end();
  }
  desk.waitUntil("the keys to be free once the poster has gone", [&] { return freeKeys() == before; });
}

TEST_F(XcbEventPosterTest, TypesMoreForeignCharactersThanThereAreFreeKeys) {
  std::string text, later = " und später";
  for (char32_t c = 0x3b1; c < 0x3b1 + 60; ++c)
    text += text::toUtf8(std::u16string(1, static_cast<char16_t>(c)));
  ASSERT_GT(60u, freeKeys());
  type(text);
  EXPECT_TRUE(poster.isInjecting());
  type(later);
  expectText(text + later);
}

TEST_F(XcbEventPosterTest, TypesTheSameWhateverTheUserHolds) {
  for (std::uint8_t held :
       {ModifierSet::shift, ModifierSet::control, ModifierSet::option, ModifierSet::command}) {
    desk.user.hold({held});
    type("Ab é");
    expectText("Ab é");
    // Still held for whatever the user presses next, and let go when the user lets go.
    desk.window.keys.clear();
    desk.user.press(0);
    desk.user.release({held});
    desk.user.press(0);
    desk.letKeysArrive();
    EXPECT_THAT(desk.window.keys, ElementsAre(KeyCombo{0, {held}}, KeyCombo{0, {}}));
    desk.window.text.clear();
  }
}

TEST_F(XcbEventPosterTest, CapsLockDoesNotLeakAndStaysOn) {
  constexpr std::uint16_t capsLock = 57;
  desk.user.press(capsLock);
  desk.letKeysArrive();
  desk.window.text.clear();
  type("Ab");
  expectText("Ab");
  desk.user.press(0);
  expectText("A");
}

// Command's place among applications is taken by Control.
TEST_F(XcbEventPosterTest, PressesControlForCommand) {
  ASSERT_TRUE(poster.begin());
  poster.press(key::v, {ModifierSet::command});
  poster.end();
  desk.letKeysArrive();
  EXPECT_THAT(desk.window.keys, ElementsAre(KeyCombo{key::v, {ModifierSet::control}}));
}

struct XcbPosterHarness {
  EventPoster& poster() { return xcb; }
  EventPoster& sourceless() { return nowhere; }
  std::string text() {
    desk.waitUntil("everything to be typed", [this] { return !xcb.isInjecting(); });
    desk.letKeysArrive();
    return desk.window.text;
  }
  std::vector<KeyCombo> keys() {
    desk.letKeysArrive();
    return std::exchange(desk.window.keys, {});
  }
  void hold(ModifierSet modifiers) { desk.user.hold(modifiers); }
  KeyDesk desk;
  XcbEventPoster xcb{desk.loop, nullptr, desk.display.name()}, nowhere{desk.loop, nullptr, ":4711"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Xcb, EventPosterConformance, XcbPosterHarness);

}  // namespace
}  // namespace nimbletype
