#include "input/caret/caret_geometry.h"

#include <gtest/gtest.h>

#include "input/caret/caret_in_line.h"
#include "input/caret/marker_cross_check.h"
#include "input/caret/text_marker_caret.h"

namespace nimbletype {
namespace {

using Box = std::optional<TopLeftRect>;
using Place = std::optional<CaretPlace>;

Box box(double x, double y, double width, double height) {
  return TopLeftRect{x, y, width, height};
}
Place place(double x, double y, double height, std::optional<double> lineStart = {}) {
  return CaretPlace{{x, y, 1, height}, lineStart};
}

TEST(CaretGeometry, TakesTheBestOfTheBoxes) {
  const Box none, zero = TopLeftRect{};
  const Box letter = box(100, 50, 8, 16);  // the character before the caret; its right edge is 108
  const Box lineBreak = box(108, 50, 0, 16), next = box(30, 40, 9, 15);
  const struct {
    const char* name;
    CaretBoxes boxes;
    Place expected;
    bool followsLineBreak = false;
  } cases[] = {
      {"nothing told", {}, {}},
      {"only the empty range", {box(108, 50, 0, 18), none, none}, place(108, 50, 18)},
      {"a zero rectangle: the character before", {zero, letter, none}, place(108, 50, 16)},
      {"an empty range left of and above the screen", {box(-5, -3, 0, 16), letter, none}, place(108, 50, 16)},
      {"one that only lies left of the screen", {box(-5, 50, 0, 16), none, none}, place(-5, 50, 16)},
      {"both on one line: the empty range", {box(107, 51, 0, 14), letter, none}, place(107, 51, 14)},
      {"middle exactly at the bottom of the line", {box(20, 58, 0, 16), letter, none}, place(20, 58, 16)},
      {"empty range on the next line", {box(20, 58.5, 0, 16), letter, none}, place(108, 50, 16)},
      {"empty range without height", {box(107, 51, 0, 0), letter, none}, place(108, 50, 16)},
      {"only the character after", {none, none, next}, place(30, 40, 15)},
      {"the character after a zero rectangle before it", {zero, zero, next}, place(30, 40, 15)},
      // After a line break: the left edge of the line, not the end of the one above.
      {"its line", {box(20, 66, 0, 16), lineBreak, none}, place(20, 66, 16, 20), true},
      {"text behind it", {none, lineBreak, box(20, 66, 8, 16)}, place(20, 66, 16, 20), true},
      {"answered with the end of the line above", {lineBreak, lineBreak, none}, {}, true},
      {"all of its line", {box(20, 50, 0, 16), box(20, 50, 0, 16), none}, {}, true},
      {"nothing but the line break's own box", {zero, letter, none}, {}, true},
  };
  for (const auto& c : cases)
    EXPECT_EQ(caretFromCharacters(c.boxes, c.followsLineBreak), c.expected) << c.name;
}

// Characters are 10 wide, and the letters of a word from right to left begin at its right.
TEST(CaretInLine, StandsWhereTheNextWordBegins) {
  const auto at = [](double x, double width, double y = 50) { return box(x, y, width, 16); };
  const struct {
    std::string before, after;
    Box previous, lastOwn, tail;
    std::optional<double> caretX;  // none: not for these rules, or no box
    Box told = {};
  } cases[] = {
      {"Hello", "", at(40, 10), {}, {}, {}},
      {"שלום", "", at(160, 10), {}, {}, 160},
      {"Hello\nשלום", " \nmore", at(160, 10), {}, {}, 160},
      {"שלום", "", {}, {}, {}, {}},
      // The application's own word counts, unless it makes no sense.
      {"שלום", "", at(10, 10), {}, {}, 50, at(50, 0)},
      {"שלום", "", at(160, 10), {}, {}, 160, TopLeftRect{}},
      {"שלום", "", at(160, 10), {}, {}, 160, at(200, 0, 66)},
      {"שלום", "עולם", at(160, 10), {}, {}, 160, at(150, 0)},
      // A blank or a foreign word stands left of it, and the next word left of that.
      {"שלום ", "", at(150, 10), at(160, 10), at(150, 10), 150},
      {"שלום iPad", "", at(140, 10), at(160, 10), at(110, 50), 110},
      // In a field that runs from left to right they stand right of it.
      {"שלום ", "", at(50, 10), at(10, 10), at(50, 10), 60},
      // Wrapped away from each other.
      {"שלום ", "", at(190, 10, 66), at(10, 10, 50), at(190, 10, 66), 190},
      // A word from right to left at the end of a line that runs from left to right.
      {"Say שלום", "", at(50, 10), at(30, 10), at(40, 50), 90},
      {"Say שלום", "", at(50, 10), {}, {}, 50},
      // Amid text the character before the caret counts.
      {"שלום", "עולם", at(160, 10), {}, {}, 160},
      {"שלום iPad", "air", at(140, 10), {}, {}, 150},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.before + "|" + c.after);
    const LineAroundCaret line = lineAroundCaret(c.before, c.after);
    const auto found =
        line.isPlain() ? std::nullopt : caretInLine(line, {c.told, c.previous, {}}, {c.lastOwn, c.tail});
    EXPECT_EQ(found ? std::optional(found->rect.x) : std::nullopt, c.caretX);
  }
}

TEST(TextMarkerCaret, KeepsBoxesThatFitWhatTheyAreOf) {
  const auto kept = [](const TopLeftRect& selection, const TopLeftRect& previous, const TopLeftRect& line) {
    const MarkerBoxes boxes = plausible({selection, previous, line});
    return std::string(boxes.selection ? "s" : "") + (boxes.previousCharacter ? "p" : "") +
           (boxes.line ? "l" : "");
  };
  EXPECT_EQ(kept({5, 5, 39.9, 16}, {5, 5, 99, 99}, {5, 5, 900, 39.9}), "spl");
  EXPECT_EQ(kept({5, 5, 40, 16}, {5, 5, 100, 20}, {5, 5, 900, 40}), "");
  EXPECT_EQ(kept({0, 0, 0, 16}, {5, 5, 20, 100}, {5, 5, 900, 6}), "l");
  EXPECT_EQ(kept({-5, 5, 0, 16}, {0, 0, 8, 16}, {5, 5, 900, 5.9}), "sp");
}

TEST(TextMarkerCaret, StandsWithinARunOfTextOrUnderTheLineAbove) {
  const TextRun run{"naïve 😀", {100, 50, 80, 16}}, severalLines{"naïve 😀", {100, 50, 80, 64}};
  EXPECT_EQ(caretInRun(run, "naïve 😀")->rect, (TopLeftRect{180, 50, 1, 16}));
  EXPECT_EQ(caretInRun(run, "naïv")->rect, (TopLeftRect{140, 50, 1, 16}));
  for (const char* notInIt : {"", "other"}) EXPECT_EQ(caretInRun(run, notInIt), std::nullopt);
  EXPECT_EQ(caretInRun(severalLines, "naïve 😀"), std::nullopt);
  EXPECT_EQ(caretUnder(TopLeftRect{20, 50, 300, 18}), (CaretPlace{{20, 68, 1, 18}, 20}));
  EXPECT_EQ(caretUnder(TopLeftRect{20, 50, 300, 400}), std::nullopt);
  EXPECT_EQ(caretUnder(std::nullopt), std::nullopt);
}

TEST(MarkerCrossCheck, CountsLineBreaksForNothing) {
  const struct {
    const char *markerText, *fieldText;
    std::optional<std::int64_t> caret;
  } cases[] = {
      {"one", "one two", 3},      {"onetwo", "one\n\ntwo three", 8},  {"one\ntwo", "onetwo", 6},
      {"one\n", "one\n\ntwo", 4}, {"one\n\n\n", "one\ntwo", 4},       {"one", "one\r\ntwo", 3},
      {"😀a", "😀abc", 3},        {"other", "one two", std::nullopt}, {"one two", "one", std::nullopt},
  };
  for (const auto& c : cases) EXPECT_EQ(caretAfter(c.markerText, c.fieldText), c.caret) << c.fieldText;
}

}  // namespace
}  // namespace nimbletype
