#include "overlay/ghost_font.h"

#include <gtest/gtest.h>

#include "platform/scripted/fixed_font_metrics.h"

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

}  // namespace
}  // namespace nimbletype
