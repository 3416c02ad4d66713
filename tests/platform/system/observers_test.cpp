#include "platform/system/observers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbletype {
namespace {

using testing::ElementsAre;

class ObserversTest : public testing::Test {
 protected:
  Task add(
      std::string name, std::function<void()> then = [] {}) {
    return observers->add([this, name = std::move(name), then = std::move(then)] {
      told.push_back(name);
      then();
    });
  }
  std::unique_ptr<Observers> observers = std::make_unique<Observers>();
  std::vector<std::string> told;
};

TEST_F(ObserversTest, MayLeaveAndJoinWhileBeingTold) {
  Task self, later, joined;
  self = add("self", [&] {
    self.cancel();
    later.cancel();
    joined = add("joined");
  });
  later = add("later");
  const auto last = add("last");
  observers->notify();
  EXPECT_THAT(told, ElementsAre("self", "last"));
  observers->notify();
  EXPECT_THAT(told, ElementsAre("self", "last", "last", "joined"));
}

TEST_F(ObserversTest, AChangeMadeWhileTellingIsToldToAllOnce) {
  bool again = true;
  const auto a = add("a");
  const auto b = add("b", [&] {
    if (std::exchange(again, false)) observers->notify();
  });
  const auto c = add("c");
  observers->notify();
  EXPECT_THAT(told, ElementsAre("a", "b", "a", "b", "c"));
}

TEST_F(ObserversTest, MayEndWhatTheyObserve) {
  Task later;
  const auto ends = add("ends", [&] { observers.reset(); });
  later = add("later");
  observers->notify();
  later.cancel();
  EXPECT_THAT(told, ElementsAre("ends", "later"));
}

}  // namespace
}  // namespace nimbletype
