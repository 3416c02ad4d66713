#include "input/caret/caret_estimate.h"

#include <gtest/gtest.h>

#include <map>

#include "input/caret/caret_plausibility.h"
#include "input/caret/wrapped_text.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"

namespace nimbletype {
namespace {

const FontSpec font{.name = "", .size = 10};  // every character 5 wide, every line 10 high

TEST(WrappedText, BreaksBeforeWords) {
  const FixedFontMetrics metrics;
  const struct {
    const char* text;
    double room;
    WrappedText expected;
  } cases[] = {
      {"", 50, {1, 0}},
      {"one", 50, {1, 15}},
      {"one two", 35, {1, 35}},
      {"one two", 34, {2, 15}},
      {"one two ", 35, {1, 40}},  // the blank hangs over
      {"one  two", 20, {2, 15}},
      {"one\n", 50, {2, 0}},
      {"one\r\n\r\ntwo", 50, {3, 15}},
      {"abcdefghijkl", 25, {3, 10}},
      {"ab cdefghij", 25, {3, 5}},
      {"éé😀", 10, {2, 5}},
      {"abc", 1, {3, 5}},
  };
  for (const auto& c : cases) {
    const WrappedText wrapped = wrap(c.text, c.room, font, metrics);
    EXPECT_EQ(wrapped.lines, c.expected.lines) << c.text;
    EXPECT_EQ(wrapped.lastLineWidth, c.expected.lastLineWidth) << c.text;
  }
}

TEST(CaretEstimate, SizesAFontByTheFieldsHeight) {
  const std::map<double, double> sizes{{10, 11}, {20, 12}, {26, 15}, {29.9, 17}, {30, 13}, {400, 13}};
  for (const auto& [height, size] : sizes) EXPECT_EQ(usualFontSize(height), size) << height;
}

TEST(CaretEstimate, MeasuresTheTextBeforeTheCaret) {
  const FixedFontMetrics metrics;
  const TopLeftRect line{100, 200, 68, 21}, area{100, 200, 68, 58};  // 60 points of room, five lines
  const struct {
    const char* name;
    std::string before;
    TopLeftRect frame;
    double x, y;
  } cases[] = {
      {"an empty line", "", line, 104, 205.5},
      {"in a line", "abc", line, 119, 205.5},
      {"a line that is full stays inside", std::string(50, 'a'), line, 164, 205.5},
      {"just high enough for two lines", "", {100, 200, 68, 22}, 104, 204},
      {"an empty area", "", area, 104, 204},
      {"on the third line", "one\n\nthree", area, 129, 224},
      {"on a wrapped line", "one two three four", area, 154, 214},
      {"blanks do not reach over the edge", "one two thre        ", area, 164, 204},
      {"five lines fit", "1\n2\n3\n4\n5", area, 109, 244},
      {"six have scrolled", "1\n2\n3\n4\n5\n6", area, 109, 244},
      {"narrower than its margins", "ab", {100, 200, 5, 100}, 101, 204},
  };
  for (const auto& c : cases) {
    const CaretPlace place = estimateCaret(c.before, c.frame, font, metrics);
    EXPECT_EQ(place.rect.x, c.x) << c.name;
    EXPECT_EQ(place.rect.y, c.y) << c.name;
    EXPECT_EQ(place.rect.width, 1) << c.name;
    EXPECT_EQ(place.rect.height, 10) << c.name;
    EXPECT_EQ(place.lineStartX, 104) << c.name;
  }
}

TEST(CaretPlausibility, SuspectsABoxOnTheFirstLineOfAText) {
  const TopLeftRect frame{100, 200, 400, 100}, first{130, 204, 1, 16};
  const struct {
    const char* name;
    TopLeftRect caret, frame;
    std::string before;
    bool expected;
  } cases[] = {
      {"three lines further up than it should be", first, frame, "a\nb\nc", true},
      {"one line break may be a wrapped line's", first, frame, "a\nb", false},
      {"where it belongs", {130, 236, 1, 16}, frame, "a\nb\nc", false},
      {"a text that may have been scrolled", first, frame, "a\nb\nc\nd\ne\nf", false},
      {"no frame", first, {}, "a\nb\nc", false},
  };
  for (const auto& c : cases) EXPECT_EQ(isSuspiciouslyHigh(c.caret, c.frame, c.before), c.expected) << c.name;
  EXPECT_TRUE(isOnLineOf(first, {104, 207, 8, 16}));
  EXPECT_FALSE(isOnLineOf(first, {104, 172, 8, 16})) << "the text has been scrolled";
  EXPECT_FALSE(isOnLineOf(first, {}));
}

}  // namespace
}  // namespace nimbletype
