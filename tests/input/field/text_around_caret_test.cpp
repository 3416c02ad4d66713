#include "input/field/text_around_caret.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

// Wherever the border falls, what is kept fits and consists of whole characters.
TEST(TextAroundCaret, CutsBetweenCharacters) {
  const std::string thumb = "👍🏽", accented = "e\u0301";  // four and two units
  EXPECT_EQ(endOfText("abcdef", 4), "cdef");
  EXPECT_EQ(startOfText("abcdef", 4), "abcd");
  EXPECT_EQ(endOfText("abc", 4), "abc");
  EXPECT_EQ(endOfText("x" + thumb + "ab", 6), thumb + "ab");
  EXPECT_EQ(endOfText("x" + thumb + "ab", 5), "ab");
  EXPECT_EQ(startOfText("ab" + thumb + "x", 3), "ab");
  EXPECT_EQ(startOfText("abc" + accented, 4), "abc");
  EXPECT_EQ(startOfText(accented, 1), "");
}

TEST(TextAroundCaret, ReadsNoMoreThanThereIs) {
  EXPECT_EQ(rangeBefore({10, 4}), (TextRange{0, 10}));
  EXPECT_EQ(rangeAfter({10, 4}, 20), (TextRange{14, 6}));
  EXPECT_EQ(rangeAfter({10, 4}, 12), (TextRange{14, 0}));
  const TextRange far = rangeBefore({100'000, 0});
  EXPECT_EQ(far.location + far.length, 100'000);
  EXPECT_GE(far.length, mostBefore);
  EXPECT_GE(rangeAfter({0, 0}, 100'000).length, mostAfter);
}

TEST(TextAroundCaret, FindsTheParagraphOfTheCaret) {
  EXPECT_EQ(paragraphStart("one\ntwo", 7), 4);
  EXPECT_EQ(paragraphStart("one\n", 4), 4);
  EXPECT_EQ(paragraphStart("😀\n😀x", 6), 3);
  EXPECT_EQ(paragraphStart("one", 3), 0);
  EXPECT_EQ(paragraphStart("", 0), 0);
  EXPECT_EQ(paragraphStart("cut off in front", 4000), std::nullopt);
}

}  // namespace
}  // namespace nimbletype
