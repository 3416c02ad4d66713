#include "overlay/ghost/ghost_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/drawing/fixed_font_metrics.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;

// With a font of size 10 a character is 5 wide and a line 10 high, 2 of them below the baseline. The field's
// text runs from 106 to 294, so that 188 points are 37 characters; the caret stands at its start unless told
// otherwise.
class GhostLayoutTest : public testing::Test {
 protected:
  GhostLayoutTest() {
    content.text = "one two three";
    content.caretRect = {206, 500, 1, 10};
    content.fieldFrame = {100, 400, 200, 200};
    content.fontSize = 10;
  }

  GhostLayout layOut() const { return layoutGhost(content, {.name = "", .size = 10}, area, "tab", metrics); }

  static std::vector<std::string> boxRows(const GhostLayout& layout) {
    std::vector<std::string> rows;
    for (const auto& line : layout.lines)
      if (line.inBox) rows.push_back(line.text);
    return rows;
  }

  FixedFontMetrics metrics;
  GhostArea area{{0, 0, 1440, 875}, 0};
  GhostContent content;
};

TEST_F(GhostLayoutTest, TextThatFitsStandsOnTheCaretsRow) {
  const GhostLayout layout = layOut();
  ASSERT_EQ(layout.lines.size(), 1U);
  EXPECT_EQ(layout.lines[0], (GhostLayout::Line{"one two three", false, {206, 500, 65, 10}, 502}));
  EXPECT_EQ(layout.frame, (BottomLeftRect{206, 500, 65, 10}));
  EXPECT_EQ(layout.container, std::nullopt);
  EXPECT_EQ(layout.hintX, std::nullopt);
  content.kind = GhostContent::Kind::correction;
  EXPECT_EQ(layOut().lines.at(0).text, "→ one two three");
}

TEST_F(GhostLayoutTest, TheBaselineFollowsTheCaretsHeight) {
  struct Case {
    double caretY, caretHeight, nudge, rowHeight, baseline;
    BottomLeftRect frame;
  };
  const Case cases[] = {
      {500, 10, 0, 10, 502, {206, 500, 65, 10}},
      {500, 16, 0, 16, 505, {206, 500, 65, 16}},  // taller than the line: the row is the caret's
      {500, 6, 0, 10, 500, {206, 498, 65, 10}},   // lower: the row is the line's, centred
      {500.5, 10, 0, 10, 502.5, {206, 500, 65, 11}},
      {500, 10, -2, 10, 500, {206, 498, 65, 10}}};
  for (const Case& c : cases) {
    content.caretRect = {206, c.caretY, 1, c.caretHeight};
    content.verticalNudge = c.nudge;
    const GhostLayout layout = layOut();
    EXPECT_EQ(layout.lineHeight, c.rowHeight) << c.caretHeight;
    EXPECT_EQ(layout.lines.at(0).baseline, c.baseline) << c.caretHeight;
    EXPECT_EQ(layout.frame, c.frame) << c.caretHeight;
  }
}

// A line's descender is two tenths of its font's size.
TEST_F(GhostLayoutTest, ScaledTextStandsOnTheFieldsBaseline) {
  for (const double scale : {0.7, 1.0, 1.5, 2.0}) {
    content.textScale = scale;
    const GhostLayout layout = layOut();
    const GhostLayout::Line& line = layout.lines.at(0);
    EXPECT_EQ(layout.font.size, 10 * scale);
    EXPECT_EQ(line.baseline, 502) << scale;
    EXPECT_LE(line.rect.y, 502 - 2 * scale) << scale;
    EXPECT_GE(line.rect.top(), 502 + 8 * scale) << scale;
  }
}

TEST_F(GhostLayoutTest, WrapsOnlyWhereItMayAndCan) {
  content.text = "one two three four five six";
  struct Case {
    const char* what;
    bool allowWrap;
    std::optional<double> lineStartX;
    std::optional<BottomLeftRect> field;
    std::string onRow;
    std::vector<std::string> inBox;
  };
  const std::optional<BottomLeftRect> field = content.fieldFrame;
  const Case cases[] = {
      {"from the field's edge", true, {}, field, "one two three ", {"four five six"}},
      {"from the line's start", true, 150, field, "one two three ", {"four five six"}},
      {"wrap off", false, 150, field, content.text, {}},
      {"line starts at the caret", true, 206, field, content.text, {}},
      {"neither line nor field known", true, {}, {}, content.text, {}},
      {"field narrower", true, {}, {{100, 400, 110, 200}}, "", {"one two three four", "five six"}}};
  for (const Case& c : cases) {
    content.allowWrap = c.allowWrap;
    content.lineStartX = c.lineStartX;
    content.fieldFrame = c.field;
    const GhostLayout layout = layOut();
    EXPECT_EQ(layout.lines.at(0).inBox ? "" : layout.lines[0].text, c.onRow) << c.what;
    EXPECT_EQ(boxRows(layout), c.inBox) << c.what;
    EXPECT_EQ(layout.container.has_value(), !c.inBox.empty()) << c.what;
  }
}

TEST_F(GhostLayoutTest, TheBoxStandsUnderTheRowOrAboveWhereNoRowFitsBelow) {
  content.text = "one two three four five six";
  GhostLayout layout = layOut();
  EXPECT_EQ(layout.lines.at(0).rect, (BottomLeftRect{206, 500, 70, 10}));
  EXPECT_EQ(layout.lines.at(1), (GhostLayout::Line{"four five six", true, {106, 482, 65, 10}, 484}));
  EXPECT_EQ(layout.container, (BottomLeftRect{102, 477, 75, 20}));  // 3 under the row, 5 around the text
  EXPECT_EQ(layout.frame, (BottomLeftRect{102, 477, 174, 33}));
  EXPECT_EQ(layout.rowsBelow, 48);
  for (const double bottom : {477, 478}) {  // a row needs 23 points under the caret
    area.rect = {0, bottom, 1440, 400};
    layout = layOut();
    EXPECT_EQ(layout.rowsBelow, bottom == 477 ? 1 : 0);
    EXPECT_EQ(layout.container, (BottomLeftRect{102, bottom == 477 ? 477.0 : 513.0, 75, 20}));
  }
}

TEST_F(GhostLayoutTest, RowsBeyondTheAreaAreCutWithAnEllipsis) {
  content.caretRect.x = 290;
  content.text = "the first row of the box holds these, the second holds what would not fit there, and so on";
  EXPECT_EQ(boxRows(layOut()).size(), 3U);
  area.rect.y = 467;  // two rows
  EXPECT_THAT(boxRows(layOut()),
              ElementsAre("the first row of the box holds these,", "the second holds what would not fit…"));
}

TEST_F(GhostLayoutTest, NarrowBoxesKeepRoomForTheirWords) {
  content.fieldFrame = {100, 400, 30, 200};
  content.caretRect.x = 122;
  content.text = "ab unbreakable";
  const GhostLayout layout = layOut();
  EXPECT_THAT(boxRows(layout), ElementsAre("ab", "unbr", "eaka", "ble"));  // 24 points are four characters
  for (const auto& line : layout.lines) EXPECT_EQ(line.rect.width, 24) << line.text;
  EXPECT_GE(layout.container->width, 24);
}

TEST_F(GhostLayoutTest, TheKeycapFollowsTheTextWhereItFits) {
  content.hint = true;
  content.text = "one";
  GhostLayout layout = layOut();
  EXPECT_EQ(layout.hintX, 206 + 15 + 6);
  EXPECT_EQ(layout.hintWidth, 3 * 4.5 + 10);
  EXPECT_EQ(layout.frame.right(), std::ceil(227 + 23.5));
  EXPECT_EQ(keycapRect(layout).y + keycapRect(layout).height / 2, 505);
  content.text = "one two three four";  // ends at 296; wraps, and the keycap goes with the box
  layout = layOut();
  EXPECT_EQ(layout.hintX, 106 + 24 + 6);
  content.allowWrap = false;
  EXPECT_EQ(layOut().hintX, std::nullopt);
}

TEST_F(GhostLayoutTest, AnchoredTextStaysOnTheScreenInOneRow) {
  content.anchored = true;
  content.text = "one two three four five six seven eight";
  EXPECT_EQ(layOut().lines.at(0).rect.x, 206);
  EXPECT_EQ(layOut().lines.size(), 1U);
  content.caretRect.x = 1400;
  EXPECT_EQ(layOut().lines.at(0).rect.right(), 1440 - 6);
}

}  // namespace
}  // namespace nimbletype
