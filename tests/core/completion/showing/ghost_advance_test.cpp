#include "core/completion/showing/ghost_advance.h"

#include <gtest/gtest.h>

#include "platform/scripted/drawing/fixed_font_metrics.h"

namespace nimbletype {
namespace {

// A character is 5 wide; the line starts at 106 and the field ends at 294.
class GhostAdvanceTest : public testing::Test {
 protected:
  // Where the ghost is drawn when the field tells that this much of "river bank" was typed and the caret at
  // x.
  double typed(std::size_t count, double x, double y = 500) {
    const std::string whole = "river bank";
    GhostContent content;
    content.lineText = "The " + whole.substr(0, count);
    content.text = whole.substr(count);
    content.caretRect = {x, y, 1, 10};
    content.fieldFrame = {100, 400, 194, 200};
    content.fontSize = 10;
    return advance.follow(content).caretRect.x;
  }

  FixedFontMetrics metrics;
  GhostAdvance advance{metrics};
};

TEST_F(GhostAdvanceTest, LettersStayWhileReportsAreRounded) {
  EXPECT_EQ(typed(0, 126), 126);
  EXPECT_EQ(typed(1, 131.4), 131);
  EXPECT_EQ(typed(2, 135.2), 136);
  EXPECT_EQ(typed(3, 143), 143) << "more than rounding";
  EXPECT_FALSE(advance.lagSuspect());
}

TEST_F(GhostAdvanceTest, ACaretThatStandsStillIsNotBelievedAtOnce) {
  typed(0, 126);
  EXPECT_EQ(typed(1, 126), 131);
  EXPECT_TRUE(advance.lagSuspect());
  EXPECT_EQ(typed(2, 131), 136) << "one key behind";
  EXPECT_TRUE(advance.lagSuspect());
  EXPECT_EQ(typed(2, 131), 136) << "asked again, no news";
  EXPECT_EQ(typed(2, 136), 136) << "it has caught up";
  EXPECT_FALSE(advance.lagSuspect());
}

TEST_F(GhostAdvanceTest, ACaretThatStillStandsThereIsRight) {
  typed(0, 126);
  typed(1, 126);
  EXPECT_EQ(advance.believed().caretRect.x, 126);
  EXPECT_EQ(typed(1, 126), 126);
  EXPECT_FALSE(advance.lagSuspect());
}

TEST_F(GhostAdvanceTest, OnlyTheApplicationKnowsWhereALineBreaks) {
  typed(0, 285);
  EXPECT_EQ(typed(1, 285), 285) << "the letter may go to the next line";
  EXPECT_TRUE(advance.lagSuspect());
  EXPECT_EQ(typed(1, 111, 490), 111);
  EXPECT_FALSE(advance.lagSuspect());
}

TEST_F(GhostAdvanceTest, PredictsInTheWidthThatTheApplicationSets) {
  typed(0, 126);
  for (std::size_t count = 1; count <= 8; ++count) typed(count, 126 + 8.0 * static_cast<double>(count));
  EXPECT_EQ(typed(9, 190), 198);
}

TEST_F(GhostAdvanceTest, AnotherSuggestionStandsWhereTheCaretIs) {
  typed(0, 126);
  advance.forget();
  EXPECT_EQ(typed(1, 126), 126);
}

}  // namespace
}  // namespace nimbletype
