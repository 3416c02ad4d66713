#include "input/source/attach_retry.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

using Times = std::vector<long>;

struct Retry {
  VirtualMainLoop loop;
  AttachRetry retry{loop};
  Times tried, succeeded;
  void start(std::size_t successAt) {
    retry.start(
        [this, successAt] {
          tried.push_back(loop.elapsed().count());
          return tried.size() == successAt;
        },
        [this](Milliseconds wait) { succeeded.push_back(wait.count()); });
  }
};

TEST(AttachRetry, TellsTheWaitJustTakenOrGivesUpAfterTheSixthTry) {
  const struct {
    std::size_t successAt;
    Times tried, succeeded;
  } cases[] = {{0, {300, 1000, 2500, 5500, 10500, 18500}, {}}, {3, {300, 1000, 2500}, {1500}}};
  for (const auto& c : cases) {
    Retry r;
    r.start(c.successAt);
    r.loop.advance(Milliseconds(100'000));
    EXPECT_EQ(r.tried, c.tried);
    EXPECT_EQ(r.succeeded, c.succeeded);
    EXPECT_FALSE(r.retry.isRunning());
  }
}

TEST(AttachRetry, StopsWhenCancelledAndBeginsAnewWhenRestarted) {
  Retry r;
  r.start(0);
  r.loop.advance(Milliseconds(1000));
  r.start(0);
  r.loop.advance(Milliseconds(300));
  r.retry.cancel();
  r.loop.advance(Milliseconds(100'000));
  EXPECT_EQ(r.tried, (Times{300, 1000, 1300}));
}

}  // namespace
}  // namespace nimbletype
