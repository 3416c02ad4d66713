#include "platform/scripted/system/virtual_main_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nimbletype {
namespace {

using testing::ElementsAre;
using namespace std::chrono_literals;

class VirtualMainLoopTest : public testing::Test {
 protected:
  std::function<void()> note(int name) {
    return [this, name] { ran.push_back(name); };
  }
  VirtualMainLoop loop;
  std::vector<int> ran;
};

TEST_F(VirtualMainLoopTest, RunsWhatFallsDueWithinTheSpanInOrder) {
  std::vector<Task> tasks;
  tasks.push_back(loop.after(10ms, note(3)));
  tasks.push_back(loop.after(5ms, [&] {
    ran.push_back(1);
    loop.post(note(2));                          // before the next timer
    tasks.push_back(loop.after(5ms, note(5)));   // due with 3 and 4, scheduled after them
    tasks.push_back(loop.after(6ms, note(99)));  // beyond the span
  }));
  tasks.push_back(loop.after(10ms, note(4)));
  loop.post(note(0));
  loop.advance(10ms);
  EXPECT_THAT(ran, ElementsAre(0, 1, 2, 3, 4, 5));
  loop.advance(1ms);
  EXPECT_EQ(ran.back(), 99);
  EXPECT_TRUE(loop.isIdle());
}

TEST_F(VirtualMainLoopTest, ClocksMoveTogetherAndShowEachJobItsTime) {
  const auto start = loop.now();
  const WallTime morning = std::chrono::sys_days{std::chrono::March / 7 / 2025} + 9h;
  EXPECT_EQ(loop.wallNow(), morning);
  WallTime seen;
  const auto task = loop.after(250ms, [&] { seen = loop.wallNow(); });
  loop.advance(1s);
  EXPECT_EQ(seen, morning + 250ms);
  EXPECT_EQ(loop.now() - start, 1s);
  EXPECT_EQ(loop.elapsed(), 1s);
  loop.setWallNow(morning + 24h);
  loop.advance(1min);
  EXPECT_EQ(loop.wallNow(), morning + 24h + 1min);
  EXPECT_EQ(loop.elapsed(), 61s);
}

TEST_F(VirtualMainLoopTest, RunPostedLeavesTimeAlone) {
  const auto task = loop.after(0ms, note(2));
  loop.post(note(1));
  loop.runPosted();
  EXPECT_THAT(ran, ElementsAre(1));
  EXPECT_FALSE(loop.isIdle());
  loop.advance(0ms);
  EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST_F(VirtualMainLoopTest, TasksMayOutliveTheLoop) {
  auto shortLived = std::make_unique<VirtualMainLoop>();
  auto task = shortLived->after(1ms, note(1));
  const auto owned = std::make_shared<Task>(shortLived->after(2ms, note(2)));
  auto owner = shortLived->after(3ms, [owned] {});
  shortLived.reset();
  task.cancel();
  EXPECT_TRUE(ran.empty());
}

}  // namespace
}  // namespace nimbletype
