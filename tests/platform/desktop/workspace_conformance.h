#pragma once
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/desktop/workspace.h"

// What every `Workspace` has to do, run with two applications that can be brought to the front.
namespace nimbletype::conformance {

class WorkspaceWorld {
 public:
  virtual ~WorkspaceWorld() = default;
  virtual Workspace& workspace() = 0;
  // The application as the workspace is to report it.
  virtual RunningApp app(int index) = 0;
  virtual void bringToFront(int index) = 0;
  virtual void waitFor(const std::string& what, const std::function<bool()>& condition) = 0;
};
template <typename World>
std::unique_ptr<WorkspaceWorld> makeWorkspaceWorld() {
  return std::make_unique<World>();
}

class WorkspaceConformance : public ::testing::TestWithParam<std::unique_ptr<WorkspaceWorld> (*)()> {
 protected:
  void SetUp() override {
    world_ = GetParam()();
    bringToFront(0);
  }
  void bringToFront(int index) {
    world_->bringToFront(index);
    world_->waitFor("application " + std::to_string(index) + " in front",
                    [&] { return world_->workspace().frontmost() == world_->app(index); });
  }
  Workspace& workspace() { return world_->workspace(); }

  std::unique_ptr<WorkspaceWorld> world_;
};

TEST_P(WorkspaceConformance, TellsItsOneListenerOfEachChangeOfTheFrontmostApplication) {
  int first = 0;
  std::optional<RunningApp> told;
  workspace().onFrontmostChanged([&] { ++first; });
  workspace().onFrontmostChanged([&] { told = workspace().frontmost(); });
  EXPECT_EQ(told, std::nullopt);
  for (const int index : {1, 0}) {
    world_->bringToFront(index);
    world_->waitFor("word of application " + std::to_string(index),
                    [&] { return told == world_->app(index); });
    EXPECT_EQ(told, world_->app(index));
  }
  workspace().onFrontmostChanged({});
  bringToFront(1);
  EXPECT_EQ(told, world_->app(0)) << "the listener had gone";
  EXPECT_EQ(first, 0);
}

TEST_P(WorkspaceConformance, ListsWindowsFromTheFrontToTheBack) {
  for (const int front : {1, 0}) {
    bringToFront(front);
    std::vector<ScreenWindow> windows;
    world_->waitFor("window " + std::to_string(front) + " on top", [&] {
      windows = workspace().windows();
      return windows.size() >= 2 && windows[0].app == world_->app(front);
    });
    ASSERT_GE(windows.size(), 2u);
    EXPECT_EQ(windows[1].app, world_->app(1 - front));
    EXPECT_NE(windows[0].id, windows[1].id);
    EXPECT_EQ(windows[0].title, "Window " + std::to_string(front));
    EXPECT_EQ(windows[0].frame.width, 200);
    EXPECT_EQ(windows[0].frame.height, 100);
  }
}

}  // namespace nimbletype::conformance
