#pragma once
#include <utility>

#include "platform/desktop/workspace.h"

namespace nimbletype {

// The frontmost application is the one the test says.
class ScriptedWorkspace : public Workspace {
 public:
  std::optional<RunningApp> frontmost() override { return app_; }
  void onFrontmostChanged(std::function<void()> changed) override { changed_ = std::move(changed); }
  std::vector<ScreenWindow> windows() override {
    ++timesListed;
    return onScreen;
  }

  std::vector<ScreenWindow> onScreen;  // front to back
  int timesListed = 0;
  void bringToFront(std::optional<RunningApp> app);

 private:
  std::optional<RunningApp> app_;
  std::function<void()> changed_;
};

}  // namespace nimbletype
