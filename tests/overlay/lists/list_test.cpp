#include <gtest/gtest.h>

#include <tuple>

#include "overlay/lists/alternatives_panel.h"
#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/drawing/recording_overlay_surface.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

const Screen laptop{{0, 0, 1440, 900}, {0, 70, 1440, 806}},
    beside{{1440, 0, 1000, 900}, {1440, 0, 1000, 900}};

TEST(ListPlacement, StaysByTheCaretAndOnItsScreen) {
  const std::tuple<const char*, BottomLeftRect, std::size_t, double, double> cases[] = {
      {"under the caret's row", {500, 600, 1, 18}, 3, 486, 600 - 102 - 6},
      {"its end 4 points inside the screen", {1400, 600, 1, 18}, 3, 1440 - 380 - 4, 492},
      {"its start 4 points inside the screen", {5, 600, 1, 18}, 3, 4, 492},
      {"over the row where the Dock leaves no room", {500, 170, 1, 18}, 3, 486, 170 + 18 + 6},
      {"the last place under the row", {500, 178, 1, 18}, 3, 486, 70},
      {"of the second screen", {1450, 600, 1, 18}, 1, 1444, 600 - 42 - 6},
      {"wherever, on no screen", {-500, 5, 1, 18}, 1, -514, 5 - 42 - 6}};
  for (const auto& [what, caret, rows, x, y] : cases)
    EXPECT_EQ(listFrame(caret, rows, {}, std::vector{laptop, beside}),
              (BottomLeftRect{x, y, 380, static_cast<double>(rows) * 30 + 12}))
        << what;
}

TEST(ListDraw, CutsTextBetweenCharacters) {
  const FixedFontMetrics metrics;
  const FontSpec font{"", 10};  // 5 points a character
  EXPECT_EQ(fitted("abcdef", 30, font, metrics), "abcdef");
  EXPECT_EQ(fitted("abcdefg", 30, font, metrics), "abcde…");
  EXPECT_EQ(fitted("ab defg", 22, font, metrics), "ab…");
  EXPECT_EQ(fitted("👩‍👩‍👧👩‍👩‍👧", metrics.width(font, "👩‍👩‍👧…"), font,
                   metrics),
            "👩‍👩‍👧…");
}

TEST(Alternatives, RowsShowWholeWords) {
  const std::tuple<const char*, const char*, const char*, AlternativeChoice> cases[] = {
      {"I like wor", "ld is big", "world is big", {"wor", "world is big"}},
      {"I like wor", ", he said ", ", he said", {"", ", he said"}},
      {"I like wor", " and you", "and you", {"", " and you"}},
      {"I like ", "you ", "you", {"", "you"}},
      {"It's", "n't", "It'sn't", {"It's", "It'sn't"}},
      {"3", "5 of them", "35 of them", {"3", "35 of them"}},
      {"Ça et voil", "à tout", "voilà tout", {"voil", "voilà tout"}},
      {"今日は", "天気がいい", "天気がいい", {"", "天気がいい"}},
      {"", "Hello", "Hello", {"", "Hello"}}};
  for (const auto& [before, continuation, row, choice] : cases) {
    EXPECT_EQ(rowText(continuation, wordPrefixOf(before)), row) << before << "|" << continuation;
    EXPECT_EQ(choiceOf(continuation, wordPrefixOf(before)), choice) << before << "|" << continuation;
  }
  using Texts = std::vector<std::string>;
  EXPECT_EQ(differentOnes({" yes", "Yes.", "no", "", " ", "no ", "…", "!", "yes but"}),
            (Texts{" yes", "no", "…", "!", "yes but"}));
}

TEST(AlternativesPanel, MovesDotsOnlyWhileMoreIsToCome) {
  VirtualMainLoop loop;
  RecordingOverlaySurface surface;
  ScriptedScreens screens;
  const FixedFontMetrics metrics;
  AlternativesPanel panel({surface, screens, metrics}, loop);
  const auto drawnIn = [&](Milliseconds time) {
    const int before = surface.shows;
    loop.advance(time);
    return surface.shows - before;
  };
  panel.show({}, "text ", "", {500, 600, 1, 18});
  panel.setHint("Looking", true);
  EXPECT_GT(drawnIn(Milliseconds(2000)), 4);
  panel.setItems({"one", "two"});
  panel.setHint(std::nullopt);
  EXPECT_EQ(drawnIn(Milliseconds(2000)), 0);
  EXPECT_EQ(surface.texts(), (std::vector<std::string>{"one", "two"}));
  panel.moveSelection(-1);
  EXPECT_EQ(panel.chosenText(), "two");
  panel.setHint("Looking", true);
  panel.hide();
  EXPECT_EQ(drawnIn(Milliseconds(2000)), 0);
  EXPECT_FALSE(surface.isVisible());
}

}  // namespace
}  // namespace nimbletype
