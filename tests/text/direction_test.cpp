#include "text/direction.h"

#include <gtest/gtest.h>

#include "text/right_to_left.h"

namespace nimbletype::text {
namespace {

constexpr auto left = Direction::leftToRight, right = Direction::rightToLeft;

TEST(Direction, IsThatOfTheFirstLetter) {
  const std::pair<const char*, std::optional<Direction>> table[] = {
      {"12 (abc שלום", left}, {"… שלום abc", right}, {"مرحبا", right}, {"今日は", left}, {"12 + 3", {}}};
  for (const auto& [line, direction] : table) EXPECT_EQ(firstStrongDirection(line), direction) << line;
}

TEST(Direction, CounterflowIsWhatEndsALineAgainstIt) {
  const std::tuple<std::string_view, Direction, std::string_view> table[] = {
      {"plain text", left, ""},
      {"They say שלום לכם", left, "שלום לכם"},
      {"They say שלום ", left, ""},  // a blank at the end goes the line's way
      {"They say שלום 12", left, "שלום 12"},
      {"שלום", left, "שלום"},
      {"שלום", right, ""},
      {"שלום my name", right, "my name"},
      {"שלום 123", right, "123"},
      {"שלום.", right, ""},
      {"Déjà vu", left, ""},
      {"", right, ""}};
  for (const auto& [line, base, expected] : table) EXPECT_EQ(counterflow(line, base), expected) << line;
}

TEST(RightToLeft, KnowsHowParagraphsBeginAndEnd) {
  struct Case {
    const char* paragraph;
    bool starts, ends;
    std::int64_t tail;
    bool tailRunsOtherWay;
  };
  for (const Case& c : {Case{"", false, false, 0, false}, Case{"12 …", false, false, 2, false},
                        Case{"Hello", false, false, 0, false}, Case{"שלום", true, true, 0, false},
                        Case{"مرحبا،", true, true, 1, false}, Case{"- שלום ", true, true, 1, false},
                        Case{"שלום iPhone", true, false, 7, true}, Case{"שלום 12", true, false, 3, true},
                        Case{"Say שלום ", false, true, 6, true}, Case{"🎉 שלום 🎉", true, true, 3, false}}) {
    EXPECT_EQ(startsRightToLeft(c.paragraph), c.starts) << c.paragraph;
    EXPECT_EQ(endsRightToLeft(c.paragraph), c.ends) << c.paragraph;
    const auto tail = paragraphTail(c.paragraph, c.starts);
    EXPECT_EQ(tail.units, c.tail) << c.paragraph;
    EXPECT_EQ(tail.runsOtherWay, c.tailRunsOtherWay) << c.paragraph;
  }
}

}  // namespace
}  // namespace nimbletype::text
