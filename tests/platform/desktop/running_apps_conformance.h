#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "platform/desktop/running_apps.h"

// What every `RunningApps` must do, run with applications that the world starts.
namespace nimbletype::conformance {

class RunningAppsWorld {
 public:
  virtual ~RunningAppsWorld() = default;
  virtual RunningApps& apps() = 0;
  // Starts an application of this name; its process.
  virtual std::int64_t launch(const std::string& name, bool refusesToQuit) = 0;
  virtual void waitFor(const std::string& what, const std::function<bool()>& condition) = 0;
};
template <typename World>
std::unique_ptr<RunningAppsWorld> makeRunningAppsWorld() {
  return std::make_unique<World>();
}

class RunningAppsConformance : public ::testing::TestWithParam<std::unique_ptr<RunningAppsWorld> (*)()> {
 protected:
  void SetUp() override { world_ = GetParam()(); }
  std::optional<RunningApp> find(std::int64_t process) {
    for (const RunningApp& app : world_->apps().all())
      if (app.processID == process) return app;
    return std::nullopt;
  }
  RunningApp launched(const std::string& name, bool refusesToQuit = false) {
    const auto process = world_->launch(name, refusesToQuit);
    world_->waitFor(name + " among the running ones", [&] { return find(process).has_value(); });
    return find(process).value_or(RunningApp{});
  }
  void awaitEnd(const RunningApp& app) {
    world_->waitFor("the end of " + app.appName, [&] { return !find(app.processID); });
  }

  std::unique_ptr<RunningAppsWorld> world_;
};

TEST_P(RunningAppsConformance, TellsOfEachThatComesAndGoes) {
  int told = 0;
  world_->apps().onChange([&] { ++told; });
  const RunningApp app = launched("Plain Words");
  EXPECT_EQ(app.appName, "Plain Words");
  EXPECT_FALSE(app.isOurs);
  world_->waitFor("word of the launch", [&] { return told > 0; });
  const int before = told;
  world_->apps().quit(app, RunningApps::Quit::polite);
  world_->waitFor("word of the end", [&] { return told > before; });
  awaitEnd(app);
}

TEST_P(RunningAppsConformance, EndsEvenTheOneThatRefusesButNoOther) {
  const RunningApp other = launched("Plain Words"), stubborn = launched("Stubborn Words", true);
  world_->apps().quit(stubborn, RunningApps::Quit::polite);
  EXPECT_TRUE(find(stubborn.processID));
  world_->apps().quit(stubborn, RunningApps::Quit::forced);
  awaitEnd(stubborn);
  world_->apps().quit(stubborn, RunningApps::Quit::forced);  // it has ended
  EXPECT_TRUE(find(other.processID));
}

}  // namespace nimbletype::conformance
