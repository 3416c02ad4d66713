#include "platform/linux/accessibility/text/atspi_offsets.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace nimbletype {
namespace {

TEST(AtspiOffsets, CountsWideCharactersTwice) {
  const AtspiOffsets offsets(100, "é😀日👍🏽x");
  struct Case {
    std::int64_t own, utf16;
  };
  for (const auto& c : {Case{0, 0}, Case{100, 100}, Case{101, 101}, Case{102, 103}, Case{103, 104},
                        Case{104, 106}, Case{105, 108}, Case{106, 109}, Case{500, 503}}) {
    EXPECT_EQ(offsets.toUtf16(c.own), c.utf16) << c.own;
    EXPECT_EQ(offsets.fromUtf16(c.utf16), c.own) << c.utf16;
    EXPECT_EQ(offsets.endFromUtf16(c.utf16), c.own) << c.utf16;
  }
}

TEST(AtspiOffsets, AUnitInsideACharacterStandsForAllOfIt) {
  const AtspiOffsets offsets(0, "a😀b");
  EXPECT_EQ(offsets.fromUtf16(2), 1);
  EXPECT_EQ(offsets.endFromUtf16(2), 2);
}

TEST(AtspiOffsets, LeavesUtf16Alone) {
  const AtspiOffsets offsets;
  EXPECT_EQ(offsets.toUtf16(7), 7);
  EXPECT_EQ(offsets.fromUtf16(7), 7);
  EXPECT_EQ(offsets.endFromUtf16(7), 7);
}

}  // namespace
}  // namespace nimbletype
