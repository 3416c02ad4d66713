#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <thread>
#include <vector>

#include "platform/system/main_loop.h"

// What every `MainLoop` must do. Instantiate with a default-constructible harness that has
//   MainLoop& loop();
//   bool runUntil(std::function<bool()> done);  // lets the loop run; false when it gave up
namespace nimbletype {

template <typename Harness>
class MainLoopConformance : public testing::Test {
 protected:
  MainLoop& loop() { return harness_.loop(); }

  // Jobs write their names here.
  std::function<void()> note(int name) {
    return [this, name] { ran_.push_back(name); };
  }
  void runUntilNoted(int name) {
    EXPECT_TRUE(harness_.runUntil([&] { return std::ranges::find(ran_, name) != ran_.end(); }))
        << "job " << name << " never ran";
  }

  Harness harness_;
  std::vector<int> ran_;
};

TYPED_TEST_SUITE_P(MainLoopConformance);

TYPED_TEST_P(MainLoopConformance, PostedJobsRunInALaterTurnInOrder) {
  this->loop().post([this] {
    this->loop().post(this->note(4));
    this->ran_.push_back(1);
  });
  this->loop().post(this->note(2));
  this->loop().post(this->note(3));
  EXPECT_TRUE(this->ran_.empty());
  this->runUntilNoted(4);
  EXPECT_THAT(this->ran_, testing::ElementsAre(1, 2, 3, 4));
}

TYPED_TEST_P(MainLoopConformance, OtherThreadsMayPost) {
  std::optional<std::thread::id> ranOn;
  std::thread other([&] {
    for (int i = 0; i < 100; ++i) this->loop().post(this->note(i));
    this->loop().post([&] {
      ranOn = std::this_thread::get_id();
      this->ran_.push_back(-1);
    });
  });
  this->runUntilNoted(-1);
  other.join();
  EXPECT_EQ(ranOn, std::this_thread::get_id());
  EXPECT_EQ(this->ran_.size(), 101U);
  EXPECT_TRUE(std::is_sorted(this->ran_.begin(), this->ran_.end() - 1));
}

TYPED_TEST_P(MainLoopConformance, DelayedJobsRunOnceWhenTheyFallDue) {
  const auto start = this->loop().now();
  std::optional<MonotonicTime> ranAt;
  const auto late = this->loop().after(Milliseconds(60), this->note(2));
  const auto early = this->loop().after(Milliseconds(20), [&] {
    ranAt = this->loop().now();
    this->ran_.push_back(1);
  });
  const auto last = this->loop().after(Milliseconds(120), this->note(3));
  this->runUntilNoted(3);
  EXPECT_THAT(this->ran_, testing::ElementsAre(1, 2, 3));
  ASSERT_TRUE(ranAt);
  EXPECT_GE(*ranAt - start, Milliseconds(20));
}

TYPED_TEST_P(MainLoopConformance, ZeroDelayMeansALaterTurn) {
  const auto task = this->loop().after(Milliseconds(0), this->note(1));
  EXPECT_TRUE(this->ran_.empty());
  this->runUntilNoted(1);
}

TYPED_TEST_P(MainLoopConformance, DestroyedOrReplacedTasksNeverRun) {
  { const auto destroyed = this->loop().after(Milliseconds(1), this->note(1)); }
  auto replaced = this->loop().after(Milliseconds(1), this->note(2));
  replaced = this->loop().after(Milliseconds(2), this->note(3));
  auto moved = std::move(replaced);
  auto cancelledByAnother = this->loop().after(Milliseconds(60), this->note(4));
  const auto canceller = this->loop().after(Milliseconds(1), [&] { cancelledByAnother = {}; });
  const auto last = this->loop().after(Milliseconds(90), this->note(5));
  this->runUntilNoted(5);
  EXPECT_THAT(this->ran_, testing::ElementsAre(3, 5));
}

TYPED_TEST_P(MainLoopConformance, AJobMayReplaceItsOwnTask) {
  Task task;
  task = this->loop().after(Milliseconds(1), [&] {
    this->ran_.push_back(1);
    task = this->loop().after(Milliseconds(1), this->note(2));
  });
  this->runUntilNoted(2);
  EXPECT_THAT(this->ran_, testing::ElementsAre(1, 2));
}

REGISTER_TYPED_TEST_SUITE_P(MainLoopConformance, PostedJobsRunInALaterTurnInOrder, OtherThreadsMayPost,
                            DelayedJobsRunOnceWhenTheyFallDue, ZeroDelayMeansALaterTurn,
                            DestroyedOrReplacedTasksNeverRun, AJobMayReplaceItsOwnTask);

}  // namespace nimbletype
