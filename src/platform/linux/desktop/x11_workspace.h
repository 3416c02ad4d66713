#pragma once
#include "platform/linux/desktop/x11_clients.h"

namespace nimbletype {

// `Workspace` from what the window manager and the windows tell on the X display of the environment. Needs a
// GLib main loop on the default context.
class X11Workspace final : public Workspace {
 public:
  explicit X11Workspace(std::shared_ptr<DesktopEntries> entries = std::make_shared<DesktopEntries>());
  X11Workspace(const X11Workspace&) = delete;
  X11Workspace& operator=(const X11Workspace&) = delete;

  std::optional<RunningApp> frontmost() override;
  void onFrontmostChanged(std::function<void()> changed) override;
  std::vector<ScreenWindow> windows() override;

 private:
  void noticeFront();

  X11Clients clients_;
  std::function<void()> changed_;
  std::optional<RunningApp> last_;
};

}  // namespace nimbletype
