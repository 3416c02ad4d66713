#include "overlay/ghost/ghost_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/drawing/recording_overlay_surface.h"
#include "platform/scripted/system/recording_system_log.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;

class GhostPanelTest : public testing::Test {
 protected:
  GhostPanelTest() {
    content.text = " for your time";
    content.caretRect = {206, 500, 1, 10};
    content.fieldFrame = {100, 400, 200, 200};
    content.fontSize = 10;
  }

  Color textColor() {
    panel.present(content);
    for (const auto& item : surface.shown->items)
      if (const auto* text = std::get_if<TextDraw>(&item)) return text->color;
    return {};
  }

  RecordingOverlaySurface surface;
  ScriptedScreens screens;
  FixedFontMetrics metrics;
  RecordingSystemLog log;
  GhostPanel panel{{surface, screens, metrics, log}};
  GhostContent content;
};

TEST_F(GhostPanelTest, ShowsOnlyWhatIsNew) {
  panel.hide();
  EXPECT_EQ(surface.hides, 0);
  panel.present(content);
  panel.present(content);
  EXPECT_EQ(surface.shows, 1);
  EXPECT_THAT(surface.texts(), ElementsAre(" for your time"));
  EXPECT_EQ(panel.content(), content);
  content.text = " your time";
  panel.present(content);
  EXPECT_EQ(surface.shows, 2);
  panel.hide();
  EXPECT_FALSE(surface.isVisible());
  EXPECT_EQ(panel.content(), std::nullopt);
  panel.present(content);  // hidden in between: the same content is new
  EXPECT_EQ(surface.shows, 3);
  GhostContent lost = content, empty = content;
  lost.caretRect = {};
  empty.text.clear();
  for (const GhostContent& nothing : {lost, empty}) {
    panel.present(content);
    panel.present(nothing);
    EXPECT_FALSE(surface.isVisible());
  }
}

TEST_F(GhostPanelTest, DrawsInTheFramesOwnSpace) {
  content.text = "one two three four five six";
  content.hint = true;
  content.hintLabel = "tab";
  panel.present(content);
  ASSERT_TRUE(surface.shown);
  EXPECT_THAT(surface.texts(), ElementsAre("one two three ", "four five six", "tab"));
  const DrawList& list = *surface.shown;
  const auto& box = std::get<BoxDraw>(list.items.at(0));
  const auto& row = std::get<TextDraw>(list.items.at(1));
  EXPECT_EQ(box.rect.x + box.rect.y, 0);
  EXPECT_EQ(list.frame.x + row.x, 206);
  EXPECT_EQ(list.frame.y + row.baseline, 502);
  EXPECT_EQ(std::get<BoxDraw>(list.items.at(3)).radius, 4);
}

TEST_F(GhostPanelTest, TheLookFollowsStyleAndBackground) {
  EXPECT_EQ(textColor(), (Color{0.55, 0.55, 0.55, 0.92}));
  content.tinted = true;
  const Color gold = textColor();
  EXPECT_GT(gold.red, gold.blue + 0.2);
  EXPECT_LT(gold.alpha, 1);
  screens.dark = true;
  content.tinted = false;
  EXPECT_EQ(textColor(), (Color{0.88, 0.88, 0.88, 0.96}));
}

TEST_F(GhostPanelTest, KeepsTheWayAFontIsSetUntilTheLineTellsOtherwise) {
  const auto setsWhole = [&] { return panel.present(content), panel.layout()->font.wholeAdvances; };
  content.fontSize = 11;
  EXPECT_TRUE(setsWhole());
  content.lineText = "twenty characters...";
  content.lineStartX = content.caretRect.x - 110;
  EXPECT_FALSE(setsWhole());
  content.lineText.clear();  // a new line
  EXPECT_FALSE(setsWhole());
  content.fontName = "Menlo";
  EXPECT_TRUE(setsWhole());
}

TEST_F(GhostPanelTest, LogsTheBox) {
  panel.present(content);
  EXPECT_TRUE(log.lines.empty());
  content.text = "one two three four five six";
  panel.present(content);
  content.caretRect.y = 12;
  content.verticalNudge = 4;
  screens.screens = {{{0, -30, 1440, 900}, {0, 5.5, 1440, 800}}};
  panel.present(content);
  using Line = RecordingSystemLog::Line;
  EXPECT_THAT(
      log.lines,
      ElementsAre(Line{"overlay", "layout: box below the row, rows 48, area bottom 0, screen bottom 0"},
                  Line{"overlay", "layout: box above the row, rows 0, area bottom 5, screen bottom -30"}));
}

}  // namespace
}  // namespace nimbletype
