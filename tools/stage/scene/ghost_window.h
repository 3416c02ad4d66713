#pragma once
#include <QRect>
#include <optional>
#include <vector>

#include "platform/linux/x11/xcb_source.h"
#include "tools/stage/scene/desktop_windows.h"
#include "tools/stage/waiting.h"

namespace nimbletype {

// The application's ghost as a person sees it: its window, which no window manager knows, and when another
// picture of it stood on the screen.
class GhostWindow {
 public:
  GhostWindow(const DesktopWindows& windows, std::uint32_t application);
  ~GhostWindow();
  GhostWindow(const GhostWindow&) = delete;
  GhostWindow& operator=(const GhostWindow&) = delete;

  // Where it stands; none while it is hidden or has nothing in it.
  std::optional<QRect> onScreen() const;
  // When it first showed each new picture.
  const std::vector<Clock::time_point>& changes() const { return changes_; }
  // When it went.
  const std::vector<Clock::time_point>& endings() const { return endings_; }

 private:
  void handle(const xcb_generic_event_t& event);
  void adopt(xcb_window_t window);
  void look();
  void stopLooking();
  std::optional<QImage> picture() const;

  const DesktopWindows& windows_;
  std::uint32_t application_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  std::vector<Clock::time_point> changes_, endings_;
  QImage last_;
  unsigned looking_ = 0;  // a timer
  Clock::time_point lookUntil_;
  XcbSource events_;
};

}  // namespace nimbletype
