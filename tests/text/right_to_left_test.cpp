#include "text/right_to_left.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

struct Case {
  const char* paragraph;
  bool starts, ends;
  std::int64_t tail;
  bool tailRunsOtherWay;
};

TEST(RightToLeft, KnowsHowParagraphsBeginAndEnd) {
  for (const Case& c : {Case{"", false, false, 0, false}, Case{"12 …", false, false, 2, false},
                        Case{"Hello", false, false, 0, false}, Case{"שלום", true, true, 0, false},
                        Case{"مرحبا،", true, true, 1, false}, Case{"- שלום ", true, true, 1, false},
                        Case{"שלום iPhone", true, false, 7, true}, Case{"שלום 12", true, false, 3, true},
                        Case{"Say שלום ", false, true, 6, true}, Case{"🎉 שלום 🎉", true, true, 3, false}}) {
    EXPECT_EQ(text::startsRightToLeft(c.paragraph), c.starts) << c.paragraph;
    EXPECT_EQ(text::endsRightToLeft(c.paragraph), c.ends) << c.paragraph;
    const auto tail = text::paragraphTail(c.paragraph, c.starts);
    EXPECT_EQ(tail.units, c.tail) << c.paragraph;
    EXPECT_EQ(tail.runsOtherWay, c.tailRunsOtherWay) << c.paragraph;
  }
}

}  // namespace
}  // namespace nimbletype
