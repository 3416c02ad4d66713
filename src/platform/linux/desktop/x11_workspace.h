#pragma once
#include <memory>

#include "platform/desktop/workspace.h"

namespace nimbletype {

// `Workspace` from what the window manager and the windows tell on the X display of the environment. Needs a
// GLib main loop on the default context.
class X11Workspace final : public Workspace {
 public:
  X11Workspace();
  ~X11Workspace() override;

  std::optional<RunningApp> frontmost() override;
  void onFrontmostChanged(std::function<void()> changed) override;
  std::vector<ScreenWindow> windows() override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace nimbletype
