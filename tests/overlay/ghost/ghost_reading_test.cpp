#include "overlay/ghost/ghost_reading.h"

#include <gtest/gtest.h>

#include <tuple>

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

}  // namespace
}  // namespace nimbletype
