#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/x11/x11_image.h"
#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

// Windows as the X server tells of them. Rectangles are pixels of the root window.
class DesktopWindows {
 public:
  DesktopWindows();  // throws when there is no display

  xcb_connection_t* connection() const { return connection_.get(); }
  xcb_window_t root() const { return rootWindow(connection()); }

  // The process that a window says it belongs to; 0 when it does not.
  std::uint32_t processOf(xcb_window_t window) const;
  // The managed, visible window of this process.
  std::optional<xcb_window_t> windowOf(std::uint32_t process) const;
  // All that are visible, those that no window manager knows and those within others' among them.
  std::vector<xcb_window_t> windowsOf(std::uint32_t process) const;
  std::string titleOf(xcb_window_t window) const;
  bool isVisible(xcb_window_t window) const;
  // It goes its own way, as menus do.
  bool isUnmanaged(xcb_window_t window) const;
  std::optional<QRect> placeOf(xcb_window_t window) const;
  // With what the window manager draws around it.
  std::optional<QRect> frameOf(xcb_window_t window) const;
  // How large programs started from now on draw their texts.
  void setFontResolution(int dotsPerInch) const;
  void resize(xcb_window_t window, QSize size) const;
  void move(xcb_window_t window, QPoint corner) const;

  // What is to be seen of the window, or of this part of the screen.
  QImage pictureOf(xcb_window_t window, const QRect& part) const {
    return x11Image(connection(), window, part);
  }
  QRect wholeScreen() const;
  QImage screen(const QRect& part) const { return pictureOf(root(), part); }

 private:
  template <typename Use>
  void withProperty(xcb_window_t window, xcb_atom_t name, Use use) const;
  void unmaximize(xcb_window_t window) const;
  void addWindowsBelow(xcb_window_t window, std::uint32_t process, std::vector<xcb_window_t>& found) const;

  XcbConnection connection_;
  xcb_atom_t clientList_ = XCB_ATOM_NONE, processID_ = XCB_ATOM_NONE;
};

}  // namespace nimbletype
