#pragma once
#include "platform/desktop/workspace.h"
#include "platform/system/task.h"

namespace nimbletype {

class MacWorkspace final : public Workspace {
 public:
  std::optional<RunningApp> frontmost() override;
  void onFrontmostChanged(std::function<void()> changed) override;
  std::vector<ScreenWindow> windows() override;

 private:
  Task registration_;
};

}  // namespace nimbletype
