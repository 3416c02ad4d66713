#include "text/direction.h"

#include <gtest/gtest.h>

namespace nimbletype::text {
namespace {

constexpr auto left = Direction::leftToRight, right = Direction::rightToLeft;

TEST(Direction, IsThatOfTheFirstLetter) {
  EXPECT_EQ(firstStrongDirection("12 (abc שלום"), left);
  EXPECT_EQ(firstStrongDirection("… שלום abc"), right);
  EXPECT_EQ(firstStrongDirection("مرحبا"), right);
  EXPECT_EQ(firstStrongDirection("今日は"), left);
  EXPECT_EQ(firstStrongDirection("12 + 3"), std::nullopt);
}

TEST(Direction, CounterflowIsWhatEndsALineAgainstIt) {
  struct Case {
    std::string_view line;
    Direction base;
    std::string_view expected;
  };
  const Case cases[] = {
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
      {"", right, ""},
  };
  for (const Case& c : cases) EXPECT_EQ(counterflow(c.line, c.base), c.expected) << c.line;
}

}  // namespace
}  // namespace nimbletype::text
