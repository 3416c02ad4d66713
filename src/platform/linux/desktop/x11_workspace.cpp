#include "platform/linux/desktop/x11_workspace.h"

#include <ranges>
#include <utility>

namespace nimbletype {

X11Workspace::X11Workspace(std::shared_ptr<DesktopEntries> entries)
    // Some window managers name the front window on when it was the last and is gone.
    : clients_(std::move(entries), [this](X11Clients::Change) { noticeFront(); }) {}

std::optional<RunningApp> X11Workspace::frontmost() {
  const auto window = clients_.active();
  return window ? clients_.appOf(*window) : std::nullopt;
}

void X11Workspace::onFrontmostChanged(std::function<void()> changed) {
  changed_ = std::move(changed);
  last_ = frontmost();
}

std::vector<ScreenWindow> X11Workspace::windows() {
  std::vector<ScreenWindow> found;
  for (const xcb_window_t window : clients_.stacked() | std::views::reverse)
    if (auto seen = clients_.inSight(window)) found.push_back(std::move(*seen));
  return found;
}

void X11Workspace::noticeFront() {
  if (!changed_) return;
  auto now = frontmost();
  if (now == last_) return;
  last_ = std::move(now);
  const auto changed = changed_;  // it may end itself
  changed();
}

}  // namespace nimbletype
