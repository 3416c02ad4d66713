#include "tools/stage/scene/key_timing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::Optional;

Clock::time_point at(int milliseconds) {
  return Clock::time_point(std::chrono::milliseconds(milliseconds));
}

TEST(KeyTiming, SortsStepsToTheKeyThatCausedThem) {
  const std::array presses{at(100), at(200), at(300)};
  const std::vector<TraceEntry> trace{{at(40), "fieldChanged"},  {at(103), "fieldChanged"},
                                      {at(104), "requested"},    {at(110), "firstText"},
                                      {at(115), "shown"},        {at(116), "suggestion"},
                                      {at(201), "shown"},  // of the key before
                                      {at(205), "fieldChanged"}, {at(206), "shown"},
                                      {at(310), "fieldChanged"}, {at(311), "requested"}};
  const std::array pictures{at(118), at(202), at(207), at(400)};
  const std::array endings{at(204), at(312), at(313)};
  const auto timings = splitByKey(presses, trace, pictures, endings);
  ASSERT_EQ(timings.size(), 3u);
  EXPECT_THAT(timings[0].steps,
              ElementsAre(Optional(3.0), Optional(1.0), Optional(6.0), Optional(5.0), Optional(3.0)));
  EXPECT_THAT(timings[0].total, Optional(18.0));
  EXPECT_FALSE(timings[0].typedOver);
  EXPECT_TRUE(timings[1].typedOver);
  EXPECT_THAT(timings[1].total, Optional(7.0));
  EXPECT_EQ(timings[2].total, std::nullopt);
  EXPECT_FALSE(timings[2].typedOver);
  EXPECT_EQ(timings[1].gone, std::nullopt);
  EXPECT_THAT(timings[2].gone, Optional(2.0));
}

TEST(KeyTiming, SpreadIsOfTheValuesMeasured) {
  const Spread spread = spreadOf({10, 9, 8, 7, 6, 5, 4, 3, 2, 1});
  EXPECT_EQ(spread.count, 10u);
  EXPECT_EQ(spread.median, 5);
  EXPECT_EQ(spread.p90, 9);
  EXPECT_EQ(spreadOf({}).count, 0u);
}

}  // namespace
}  // namespace nimbletype
