#include "input/caret/caret_geometry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbletype {
namespace {

using Box = std::optional<TopLeftRect>;

struct Case {
  std::string name;
  CaretBoxes boxes;
  bool followsLineBreak;
  std::optional<CaretPlace> expected;
};

std::optional<CaretPlace> place(double x, double y, double height, std::optional<double> lineStart = {}) {
  return CaretPlace{{x, y, 1, height}, lineStart};
}

const TopLeftRect letter{100, 50, 8, 16};  // the character before the caret; its right edge is 108

const std::vector<Case> cases{
    {"nothing told", {}, false, {}},
    {"only the empty range", {TopLeftRect{108, 50, 0, 18}, {}, {}}, false, place(108, 50, 18)},
    {"a zero rectangle falls through to the character before",
     {TopLeftRect{}, letter, {}},
     false,
     place(108, 50, 16)},
    {"an empty range left of and above the screen is no answer",
     {TopLeftRect{-5, -3, 0, 16}, letter, {}},
     false,
     place(108, 50, 16)},
    {"one that only lies left of the screen is",
     {TopLeftRect{-5, 50, 0, 16}, {}, {}},
     false,
     place(-5, 50, 16)},
    {"both on one line: the empty range",
     {TopLeftRect{107, 51, 0, 14}, letter, {}},
     false,
     place(107, 51, 14)},
    {"middle exactly at the bottom of the character before still is its line",
     {TopLeftRect{20, 58, 0, 16}, letter, {}},
     false,
     place(20, 58, 16)},
    {"empty range on the next line: behind the character before",
     {TopLeftRect{20, 58.5, 0, 16}, letter, {}},
     false,
     place(108, 50, 16)},
    {"empty range without height", {TopLeftRect{107, 51, 0, 0}, letter, {}}, false, place(108, 50, 16)},
    {"only the character after", {{}, {}, TopLeftRect{30, 40, 9, 15}}, false, place(30, 40, 15)},
    {"the character after a zero rectangle before it",
     {TopLeftRect{}, TopLeftRect{}, TopLeftRect{30, 40, 9, 15}},
     false,
     place(30, 40, 15)},

    {"after a line break: left edge of the line, not the end of the one above",
     {TopLeftRect{20, 66, 0, 16}, TopLeftRect{108, 50, 0, 16}, {}},
     true,
     place(20, 66, 16, 20)},
    {"after a line break with text behind it",
     {{}, TopLeftRect{108, 50, 0, 16}, TopLeftRect{20, 66, 8, 16}},
     true,
     place(20, 66, 16, 20)},
    {"after a line break, answered with the end of the line above",
     {TopLeftRect{108, 50, 0, 16}, TopLeftRect{108, 50, 0, 16}, {}},
     true,
     {}},
    {"after a line break that is all of its line, answered with that line",
     {TopLeftRect{20, 50, 0, 16}, TopLeftRect{20, 50, 0, 16}, {}},
     true,
     {}},
    {"after a line break, nothing but the line break's own box", {TopLeftRect{}, letter, {}}, true, {}},
};

TEST(CaretGeometry, TakesTheBestOfTheBoxes) {
  for (const auto& c : cases)
    EXPECT_EQ(caretFromCharacters(c.boxes, c.followsLineBreak), c.expected) << c.name;
}

}  // namespace
}  // namespace nimbletype
