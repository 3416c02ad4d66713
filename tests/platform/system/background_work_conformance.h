#pragma once
#include <gmock/gmock.h>

#include <memory>
#include <vector>

#include "platform/system/background_work.h"
#include "tests/platform/system/task_lifetimes.h"

// What every `BackgroundWork` must do. Instantiate with a default-constructible harness that has
//   BackgroundWork& work();
//   void waitFor(std::string what, std::function<bool()> condition);  // lets the main loop run
namespace nimbletype {

template <typename Harness>
struct BackgroundWorkConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(BackgroundWorkConformance);

TYPED_TEST_P(BackgroundWorkConformance, DoneFollowsTheWork) {
  std::vector<int> seen;
  std::vector<Task> tasks;
  for (const int i : {1, 2, 3}) {
    const auto result = std::make_shared<int>(0);
    tasks.push_back(this->work().run([result, i](const auto&) { *result = i; },
                                     [&seen, result] { seen.push_back(*result); }));
  }
  EXPECT_TRUE(seen.empty());
  this->waitFor("all work to be done", [&] { return seen.size() == 3; });
  EXPECT_THAT(seen, testing::UnorderedElementsAre(1, 2, 3));
}

TYPED_TEST_P(BackgroundWorkConformance, NothingHappensOnceTheTaskIsGone) {
  const auto running = std::make_shared<std::atomic<bool>>(false);
  bool called = false;
  const auto untilCancelled = [running](const std::atomic<bool>& cancelled) {
    *running = true;
    while (!cancelled) {
    }
    *running = false;
  };
  {
    const Task task = this->work().run(untilCancelled, [&] { called = true; });
  }
  EXPECT_FALSE(*running) << "the task did not wait for its work";
  expectTaskLifetimes([&](auto done) { return this->work().run([](const auto&) {}, done); },
                      [&](auto... wait) { this->waitFor(wait...); });
  EXPECT_FALSE(called);
}

REGISTER_TYPED_TEST_SUITE_P(BackgroundWorkConformance, DoneFollowsTheWork, NothingHappensOnceTheTaskIsGone);

}  // namespace nimbletype
