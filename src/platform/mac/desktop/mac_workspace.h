#pragma once
#import <AppKit/AppKit.h>

#include "platform/desktop/workspace.h"

namespace nimbletype {

class MacWorkspace final : public Workspace {
 public:
  MacWorkspace() = default;
  ~MacWorkspace() override { onFrontmostChanged(nullptr); }
  MacWorkspace(const MacWorkspace&) = delete;
  MacWorkspace& operator=(const MacWorkspace&) = delete;

  std::optional<RunningApp> frontmost() override;
  void onFrontmostChanged(std::function<void()> changed) override;
  std::vector<ScreenWindow> windows() override;

 private:
  id<NSObject> registration_ = nil;
};

}  // namespace nimbletype
