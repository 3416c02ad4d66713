#include "overlay/ghost/ghost_reading.h"

#include <gtest/gtest.h>

#include <tuple>

#include "overlay/ghost/ghost_area.h"
#include "overlay/ghost/ghost_font.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"

namespace nimbletype {
namespace {

using text::Direction;

constexpr auto left = Direction::leftToRight, right = Direction::rightToLeft;
const FontSpec font{.name = "", .size = 10};  // a character is 5 wide

// The field's text runs from 106 to 494.
GhostContent contentAt(double caretX, std::string line, std::optional<double> lineStart = {}) {
  GhostContent content;
  content.text = " מחר";
  content.lineText = std::move(line);
  content.caretRect = {caretX, 500, 1, 10};
  content.lineStartX = lineStart;
  content.fieldFrame = {100, 400, 400, 200};
  return content;
}

TEST(GhostReading, LinesRunAsTheirFirstLetterUnlessTheCaretSaysOtherwise) {
  const FixedFontMetrics metrics;
  const std::tuple<const char*, double, std::string, Direction> cases[] = {
      {"Latin", 200, "Hello", left},
      {"Hebrew from the right edge", 440, "שלום לכולם", right},
      {"Hebrew from the left edge, as pages set it", 106, "שלום לכולם", left},
      {"Latin first", 200, "Hello שלום", left},
      {"Hebrew first", 420, "שלום hello", right},
      {"no letters", 120, "12.", left},
      {"empty, at the right edge", 494, "", right},
      {"empty, at the left edge", 106, "", left},
      {"wrapped", 300,
       "שורה ארוכה מאוד שאינה נכנסת לשדה כולו ולכן היא נשברת לשורה הבאה של השדה הזה, ושוב אחת", right}};
  for (const auto& [what, x, line, direction] : cases)
    EXPECT_EQ(lineDirection(contentAt(x, line), font, metrics), direction) << what;
  // Its field reaches further left than its lines do.
  EXPECT_EQ(lineDirection(contentAt(250, "שלום לכולם", 245), font, metrics), left);
}

// Applications tell either side of words that run against the line as the caret's place.
TEST(GhostReading, TextFollowsTheLinesEnd) {
  const FixedFontMetrics metrics;
  const std::tuple<const char*, double, std::string, Direction, double> cases[] = {
      {"with the line", 156, "Hello dear", left, 156},
      {"near side", 131, "They שלום", left, 151},
      {"far side", 151, "They שלום", left, 151},
      {"mirrored, near side", 469, "שלום name", right, 449},
      {"mirrored, far side", 449, "שלום name", right, 449},
      {"Hebrew set from the left", 106, "שלום לכולם", left, 156}};
  for (const auto& [what, x, line, direction, expected] : cases)
    EXPECT_EQ(endOfLineX(contentAt(x, line), direction, font, metrics), expected) << what;
}

// Text right of the field's left edge: two words fit, the others wrap into a box that ends at the right.
TEST(GhostReading, LayoutsFromTheRightMirrorThoseFromTheLeft) {
  const FixedFontMetrics metrics;
  std::string line;
  for (int word = 0; word < 13; ++word) line += "שלום, ";
  GhostContent content = contentAt(156, line, 489);
  content.text = " מחר נפגש בבוקר";
  content.hint = true;
  const GhostLayout layout = layoutGhost(content, font, {{0, 0, 1440, 875}, 0}, "tab", metrics);
  ASSERT_EQ(layout.lines.size(), 2U);
  EXPECT_EQ(layout.lines[0], (GhostLayout::Line{" מחר נפגש ", false, {106, 500, 50, 10}, 502, true}));
  EXPECT_EQ(layout.lines[1], (GhostLayout::Line{"בבוקר", true, {469, 482, 25, 10}, 484, true}));
  EXPECT_EQ(layout.container, (BottomLeftRect{463, 477, 35, 20}));
  EXPECT_EQ(layout.hintX, 469 - 6 - layout.hintWidth);
  EXPECT_EQ(layout.frame.x, 106);
  EXPECT_EQ(layout.frame.right(), 498);
}

TEST(GhostFont, IsTheFieldsOrTheSystems) {
  FixedFontMetrics metrics;
  GhostContent content;
  content.fontSize = 11;
  const std::pair<const char*, const char*> fonts[] = {{"", ""}, {"Menlo", "Menlo"}, {"No Such Font", ""}};
  for (const auto& [told, used] : fonts) {
    content.fontName = told;
    EXPECT_EQ(fieldFont(content, metrics), (FontSpec{.name = used, .size = 11}));
  }
}

// At size 11 a character is 5.5 wide, or 6 in whole advances.
TEST(GhostFont, AdvancesAreToldByTheWidthOfTheLine) {
  FixedFontMetrics metrics;
  const std::string line = "twenty characters...";
  const std::tuple<const char*, std::string, std::optional<double>, std::optional<bool>> cases[] = {
      {"whole", line, 120, true}, {"fractional", line, 110, false},    {"a pixel off", line, 111, false},
      {"neither", line, 90, {}},  {"too short to tell", "ab", 12, {}}, {"no text", "", 120, {}},
      {"no start", line, {}, {}}};
  for (const auto& [what, text, width, whole] : cases) {
    GhostContent content;
    content.caretRect = {500, 300, 1, 14};
    if (width) content.lineStartX = 500 - *width;
    content.lineText = text;
    EXPECT_EQ(usesWholeAdvances(content, {.name = "", .size = 11}, metrics), whole) << what;
  }
}

// At size 10 a character is 5 wide and a line 10 high.
TEST(GhostFont, ZoomIsWhatWidthAndHeightOfTheLineAgreeOn) {
  const FixedFontMetrics metrics;
  const std::tuple<const char*, double, double, std::optional<double>> cases[] = {
      {"as told", 100, 10, 1},         {"rounding", 104, 10, 1},
      {"twice", 200, 20, 2},           {"half", 50, 5, 0.5},
      {"wider only", 200, 10, {}},     {"a tall line of the same letters", 100, 20, 1},
      {"too short to tell", 30, 3, {}}};
  for (const auto& [what, width, height, zoom] : cases) {
    GhostContent content;
    content.caretRect = {500, 300, 1, height};
    content.lineStartX = 500 - width;
    content.lineText = "twenty characters...";
    EXPECT_EQ(zoomOf(content, {.name = "", .size = 10}, metrics), zoom) << what;
  }
}

// A main screen with a Dock below and a menu bar above, one to its left that reaches lower, one above.
const std::vector<Screen> screens{{{0, 0, 1440, 900}, {0, 70, 1440, 805}},
                                  {{-1000, -200, 1000, 800}, {-1000, -200, 1000, 800}},
                                  {{0, 900, 1440, 900}, {0, 900, 1440, 875}}};

TEST(GhostArea, IsTheVisibleFrameStretchedWhereTheFieldReachesOut) {
  struct Case {
    const char* what;
    BottomLeftRect caret;
    std::optional<BottomLeftRect> field;
    bool anchored;
    GhostArea expected;
  };
  const Case cases[] = {
      {"inside the visible frame", {100, 400, 1, 16}, {{50, 100, 500, 500}}, false, {{0, 70, 1440, 805}, 0}},
      {"no field", {100, 400, 1, 16}, {}, false, {{0, 70, 1440, 805}, 0}},
      {"field into the Dock strip", {100, 400, 1, 16}, {{50, 40, 500, 500}}, false, {{0, 0, 1440, 875}, 0}},
      {"caret in the Dock strip", {100, 60, 1, 16}, {}, false, {{0, 0, 1440, 875}, 0}},
      {"field into the menu bar", {100, 400, 1, 16}, {{50, 100, 500, 790}}, false, {{0, 70, 1440, 830}, 0}},
      {"full-screen field", {100, 400, 1, 16}, {{0, 0, 1440, 900}}, false, {{0, 0, 1440, 900}, 0}},
      {"anchored ignores the field", {100, 400, 1, 16}, {{0, 0, 1440, 900}}, true, {{0, 70, 1440, 805}, 0}},
      {"left screen", {-500, -100, 1, 16}, {{-900, -150, 600, 400}}, false, {{-1000, -200, 1000, 800}, -200}},
      {"upper screen", {0, 900, 1, 16}, {}, false, {{0, 900, 1440, 875}, 900}},
      {"no screen", {3000, 400, 1, 16}, {{2900, 300, 500, 500}}, false, {}}};
  for (const Case& c : cases) {
    GhostContent content;
    content.caretRect = c.caret;
    content.fieldFrame = c.field;
    content.anchored = c.anchored;
    EXPECT_EQ(ghostArea(content, screens), c.expected) << c.what;
  }
}

}  // namespace
}  // namespace nimbletype
