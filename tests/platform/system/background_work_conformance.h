#pragma once
#include <gmock/gmock.h>

#include <memory>
#include <vector>

#include "platform/system/background_work.h"

// What every `BackgroundWork` must do. Instantiate with a default-constructible harness that has
//   BackgroundWork& work();
//   bool runUntil(std::function<bool()> done);  // lets the main loop run; false when it gave up
namespace nimbletype {

template <typename Harness>
class BackgroundWorkConformance : public testing::Test {
 protected:
  BackgroundWork& work() { return harness_.work(); }

  Harness harness_;
};

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
  EXPECT_TRUE(this->harness_.runUntil([&] { return seen.size() == 3; })) << "not all work was done";
  EXPECT_THAT(seen, testing::UnorderedElementsAre(1, 2, 3));
}

TYPED_TEST_P(BackgroundWorkConformance, NothingHappensOnceTheTaskIsGone) {
  const auto running = std::make_shared<std::atomic<bool>>(false);
  bool called = false;
  {
    const Task task = this->work().run(
        [running](const std::atomic<bool>& cancelled) {
          *running = true;
          while (!cancelled) {
          }
          *running = false;
        },
        [&] { called = true; });
  }
  EXPECT_FALSE(*running) << "the task did not wait for its work";
  bool last = false;
  const Task task = this->work().run([](const auto&) {}, [&] { last = true; });
  EXPECT_TRUE(this->harness_.runUntil([&] { return last; })) << "the next work was never done";
  EXPECT_FALSE(called);
}

TYPED_TEST_P(BackgroundWorkConformance, DoneMayDropOrReplaceItsTask) {
  std::vector<int> seen;
  Task task;
  task = this->work().run([](const auto&) {},
                          [&] {
                            task = this->work().run([](const auto&) {},
                                                    [&] {
                                                      task = {};
                                                      seen.push_back(2);
                                                    });
                            seen.push_back(1);
                          });
  EXPECT_TRUE(this->harness_.runUntil([&] { return seen.size() == 2; })) << "not all work was done";
}

REGISTER_TYPED_TEST_SUITE_P(BackgroundWorkConformance, DoneFollowsTheWork, NothingHappensOnceTheTaskIsGone,
                            DoneMayDropOrReplaceItsTask);

}  // namespace nimbletype
