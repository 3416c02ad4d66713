#include "input/caret/text_marker_caret.h"

#include <gtest/gtest.h>

#include "input/caret/marker_cross_check.h"

namespace nimbletype {
namespace {

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

TEST(TextMarkerCaret, StandsWithinARunOfText) {
  const TextRun run{"naïve 😀", {100, 50, 80, 16}};
  const auto x = [&](const TextRun& in, const char* upToCaret) {
    const auto place = caretInRun(in, upToCaret);
    return place ? place->rect.x : -1;
  };
  EXPECT_EQ(x(run, "naïve 😀"), 180);
  EXPECT_EQ(x(run, "naïv"), 140);
  EXPECT_EQ(x(run, ""), -1) << "not told";
  EXPECT_EQ(x(run, "other"), -1);
  EXPECT_EQ(x({"a b", {100, 50, 80, 64}}, "a b"), -1) << "several lines";
  EXPECT_EQ(caretInRun(run, "naïve 😀")->rect, (TopLeftRect{180, 50, 1, 16}));
}

TEST(TextMarkerCaret, StandsUnderTheLineAbove) {
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
