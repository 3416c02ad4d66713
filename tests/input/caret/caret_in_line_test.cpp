#include "input/caret/caret_in_line.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbletype {
namespace {

using Box = std::optional<TopLeftRect>;

constexpr TopLeftRect boxAt(double x, double width, double y = 50) {
  return {x, y, width, 16};
}

struct Case {
  std::string before, after;
  Box previous, lastOwn, tail;
  std::optional<double> caretX;  // none: not for these rules, or no box
  Box told = {};
};

// Characters are 10 wide, and the letters of a word from right to left begin at its right.
const std::vector<Case> cases{
    {"Hello", "", boxAt(40, 10), {}, {}, {}},
    {"שלום", "", boxAt(160, 10), {}, {}, 160},
    {"Hello\nשלום", " \nmore", boxAt(160, 10), {}, {}, 160},
    {"שלום", "", {}, {}, {}, {}},
    // The application's own word counts, unless it makes no sense.
    {"שלום", "", boxAt(10, 10), {}, {}, 50, boxAt(50, 0)},
    {"שלום", "", boxAt(160, 10), {}, {}, 160, TopLeftRect{}},
    {"שלום", "", boxAt(160, 10), {}, {}, 160, boxAt(200, 0, 66)},
    {"שלום", "עולם", boxAt(160, 10), {}, {}, 160, boxAt(150, 0)},
    // A blank or a foreign word stands left of it, and the next word left of that.
    {"שלום ", "", boxAt(150, 10), boxAt(160, 10), boxAt(150, 10), 150},
    {"שלום iPad", "", boxAt(140, 10), boxAt(160, 10), boxAt(110, 50), 110},
    // In a field that runs from left to right they stand right of it.
    {"שלום ", "", boxAt(50, 10), boxAt(10, 10), boxAt(50, 10), 60},
    // Wrapped away from each other.
    {"שלום ", "", boxAt(190, 10, 66), boxAt(10, 10, 50), boxAt(190, 10, 66), 190},
    // A word from right to left at the end of a line that runs from left to right.
    {"Say שלום", "", boxAt(50, 10), boxAt(30, 10), boxAt(40, 50), 90},
    {"Say שלום", "", boxAt(50, 10), {}, {}, 50},
    // Amid text the character before the caret counts.
    {"שלום", "עולם", boxAt(160, 10), {}, {}, 160},
    {"שלום iPad", "air", boxAt(140, 10), {}, {}, 150},
};

TEST(CaretInLine, StandsWhereTheNextWordBegins) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.before + "|" + c.after);
    const LineAroundCaret line = lineAroundCaret(c.before, c.after);
    const auto place =
        line.isPlain() ? std::nullopt : caretInLine(line, {c.told, c.previous, {}}, {c.lastOwn, c.tail});
    EXPECT_EQ(place ? std::optional(place->rect.x) : std::nullopt, c.caretX);
  }
}

}  // namespace
}  // namespace nimbletype
