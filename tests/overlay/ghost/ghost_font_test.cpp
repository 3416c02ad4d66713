#include "overlay/ghost/ghost_font.h"

#include <gtest/gtest.h>

#include <tuple>

#include "platform/scripted/drawing/fixed_font_metrics.h"

namespace nimbletype {
namespace {

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

}  // namespace
}  // namespace nimbletype
