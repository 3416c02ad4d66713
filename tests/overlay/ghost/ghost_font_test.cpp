#include "overlay/ghost/ghost_font.h"

#include <gtest/gtest.h>

#include "platform/scripted/drawing/fixed_font_metrics.h"

namespace nimbletype {
namespace {

TEST(GhostFont, IsTheFieldsOrTheSystems) {
  FixedFontMetrics metrics;
  GhostContent content;
  content.fontSize = 11;
  EXPECT_EQ(fieldFont(content, metrics), (FontSpec{.name = "", .size = 11}));
  content.fontName = "Menlo";
  EXPECT_EQ(fieldFont(content, metrics), (FontSpec{.name = "Menlo", .size = 11}));
  content.fontName = "No Such Font";
  EXPECT_EQ(fieldFont(content, metrics), (FontSpec{.name = "", .size = 11}));
}

// At size 11 a character is 5.5 wide, or 6 in whole advances.
TEST(GhostFont, AdvancesAreToldByTheWidthOfTheLine) {
  FixedFontMetrics metrics;
  struct Case {
    const char* what;
    std::string line;
    std::optional<double> start;
    std::optional<bool> whole;
  };
  const Case cases[] = {
      {"whole", "twenty characters...", 500 - 120, true},
      {"fractional", "twenty characters...", 500 - 110, false},
      {"a pixel off", "twenty characters...", 500 - 111, false},
      {"neither", "twenty characters...", 500 - 90, std::nullopt},
      {"too short to tell", "ab", 500 - 12, std::nullopt},
      {"no text", "", 500 - 120, std::nullopt},
      {"no start", "twenty characters...", std::nullopt, std::nullopt},
  };
  for (const Case& c : cases) {
    GhostContent content;
    content.caretRect = {500, 300, 1, 14};
    content.lineStartX = c.start;
    content.lineText = c.line;
    EXPECT_EQ(usesWholeAdvances(content, {.name = "", .size = 11}, metrics), c.whole) << c.what;
  }
}

// At size 10 a character is 5 wide and a line 10 high.
TEST(GhostFont, ZoomIsWhatWidthAndHeightOfTheLineAgreeOn) {
  const FixedFontMetrics metrics;
  struct Case {
    const char* what;
    double width, height;
    std::optional<double> zoom;
  };
  const Case cases[] = {
      {"as told", 100, 10, 1},
      {"rounding", 104, 10, 1},
      {"twice", 200, 20, 2},
      {"half", 50, 5, 0.5},
      {"wider only", 200, 10, {}},
      {"a tall line of the same letters", 100, 20, 1},
      {"too short to tell", 30, 3, {}},
  };
  for (const Case& c : cases) {
    GhostContent content;
    content.caretRect = {500, 300, 1, c.height};
    content.lineStartX = 500 - c.width;
    content.lineText = "twenty characters...";
    EXPECT_EQ(zoomOf(content, {.name = "", .size = 10}, metrics), c.zoom) << c.what;
  }
}

}  // namespace
}  // namespace nimbletype
