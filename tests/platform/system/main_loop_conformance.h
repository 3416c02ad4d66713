#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <thread>
#include <vector>

#include "platform/system/main_loop.h"
#include "tests/platform/system/task_lifetimes.h"

// What every `MainLoop` must do. Instantiate with a default-constructible harness that has
//   MainLoop& mainLoop();
//   void waitFor(std::string what, std::function<bool()> condition);  // lets the loop run
namespace nimbletype {

template <typename Harness>
struct MainLoopConformance : testing::Test, Harness {
  // Jobs write their names here.
  std::function<void()> note(int name) {
    return [this, name] { ran.push_back(name); };
  }
  Task after(int milliseconds, std::function<void()> job) {
    return this->mainLoop().after(Milliseconds(milliseconds), std::move(job));
  }
  void waitForJob(int name) {
    this->waitFor("job " + std::to_string(name), [&] { return std::ranges::count(ran, name) > 0; });
  }
  std::vector<int> ran;
};
TYPED_TEST_SUITE_P(MainLoopConformance);

TYPED_TEST_P(MainLoopConformance, PostedJobsRunInALaterTurnInOrder) {
  this->mainLoop().post([this] {
    this->mainLoop().post(this->note(4));
    this->ran.push_back(1);
  });
  this->mainLoop().post(this->note(2));
  this->mainLoop().post(this->note(3));
  EXPECT_TRUE(this->ran.empty());
  this->waitForJob(4);
  EXPECT_THAT(this->ran, testing::ElementsAre(1, 2, 3, 4));
}

TYPED_TEST_P(MainLoopConformance, OtherThreadsMayPost) {
  std::optional<std::thread::id> ranOn;
  std::thread other([&] {
    for (int i = 0; i < 100; ++i) this->mainLoop().post(this->note(i));
    this->mainLoop().post([&] {
      ranOn = std::this_thread::get_id();
      this->ran.push_back(-1);
    });
  });
  this->waitForJob(-1);
  other.join();
  EXPECT_EQ(ranOn, std::this_thread::get_id());
  EXPECT_EQ(this->ran.size(), 101U);
  EXPECT_TRUE(std::is_sorted(this->ran.begin(), this->ran.end() - 1));
}

TYPED_TEST_P(MainLoopConformance, DelayedJobsRunOnceWhenTheyFallDue) {
  const auto start = this->mainLoop().now();
  std::optional<MonotonicTime> ranAt;
  const auto late = this->after(60, this->note(3)), soon = this->after(0, this->note(1));
  const auto early = this->after(20, [&] {
    ranAt = this->mainLoop().now();
    this->ran.push_back(2);
  });
  const auto last = this->after(120, this->note(4));
  EXPECT_TRUE(this->ran.empty()) << "no delay means a later turn";
  this->waitForJob(4);
  EXPECT_THAT(this->ran, testing::ElementsAre(1, 2, 3, 4));
  EXPECT_GE(*ranAt - start, Milliseconds(20));
}

TYPED_TEST_P(MainLoopConformance, TasksThatEndTakeTheirJobsWithThem) {
  auto cancelledByAnother = this->after(60, this->note(4));
  const auto canceller = this->after(1, [&] { cancelledByAnother = {}; });
  const auto last = this->after(90, this->note(5));
  this->waitForJob(5);
  EXPECT_THAT(this->ran, testing::ElementsAre(5));
  expectTaskLifetimes([&](auto done) { return this->after(1, done); },
                      [&](auto... wait) { this->waitFor(wait...); });
}

REGISTER_TYPED_TEST_SUITE_P(MainLoopConformance, PostedJobsRunInALaterTurnInOrder, OtherThreadsMayPost,
                            DelayedJobsRunOnceWhenTheyFallDue, TasksThatEndTakeTheirJobsWithThem);

}  // namespace nimbletype
