#include "engines/store/transfer_rate.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

constexpr MonotonicTime start{};

class TransferRateTest : public testing::Test {
 protected:
  // Four notes a second.
  void run(std::chrono::seconds span, std::int64_t bytesASecond) {
    for (int i = 0; i < span.count() * 4; ++i) rate.note(now += 250ms, bytes += bytesASecond / 4);
  }
  double speed() const { return rate.speed(now).value_or(-1); }

  TransferRate rate;
  MonotonicTime now = start;
  std::int64_t bytes = 3'000'000;
};

TEST_F(TransferRateTest, CountsOnlyWhatComesNowAndOnlyAfterASecond) {
  EXPECT_EQ(rate.speed(now), std::nullopt);
  rate.note(now, bytes);
  EXPECT_EQ(rate.speed(now + 999ms), std::nullopt);
  run(1s, 1000);
  EXPECT_DOUBLE_EQ(speed(), 1000);
  EXPECT_EQ(rate.remaining(now, bytes + 90'500), 91s);
  EXPECT_EQ(rate.remaining(now, bytes), 0s);
}

TEST_F(TransferRateTest, ForgetsWhatWasLongAgo) {
  rate.note(now, bytes);
  run(20s, 1'000'000);
  run(8s, 1000);
  EXPECT_DOUBLE_EQ(speed(), 1000);
}

TEST_F(TransferRateTest, ComesDownToNothingInAStall) {
  rate.note(now, bytes);
  run(8s, 1000);
  EXPECT_DOUBLE_EQ(rate.speed(now + 4s).value(), 500);
  EXPECT_DOUBLE_EQ(rate.speed(now + 8s).value(), 0);
  EXPECT_EQ(rate.remaining(now + 8s, bytes + 1), std::nullopt);
}

TEST_F(TransferRateTest, StartsAnewWithTheTransfer) {
  rate.note(now, bytes);
  run(8s, 1000);
  rate.note(now, bytes = 0);
  EXPECT_EQ(rate.speed(now), std::nullopt);
  run(2s, 400);
  EXPECT_DOUBLE_EQ(speed(), 400);
}

}  // namespace
}  // namespace nimbletype
