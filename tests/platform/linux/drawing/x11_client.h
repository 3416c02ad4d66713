#pragma once
#include <xcb/xcb.h>

#include <QRect>
#include <QRegion>
#include <functional>

namespace nimbletype {

// Another application: a window of one colour that has the keyboard, on a connection of its own.
class X11Client {
 public:
  X11Client(const QRect& place, std::uint32_t color);
  ~X11Client();
  X11Client(const X11Client&) = delete;
  X11Client& operator=(const X11Client&) = delete;

  xcb_connection_t* connection() const { return connection_; }
  xcb_window_t window() const { return window_; }
  xcb_window_t focus() const;
  // The colour on screen.
  std::uint32_t pixelAt(const QPoint& point) const;
  // The shape of a window that pixels (bounding) or presses (input) reach.
  enum class Shape { bounding, input };
  QRegion shapeOf(xcb_window_t window, Shape shape) const;
  bool isMapped(xcb_window_t window) const;
  QRect placeOf(xcb_window_t window) const;
  // The window that is above all others, seen or not.
  xcb_window_t topmost() const;
  // Becomes, or ceases to be, what owns a selection.
  void ownSelection(const char* name, bool own) const;
  // Says what panels leave of the screen, as window managers do.
  void leaveFree(const QRect& area) const;
  // Waits for the server alone: no events are handled meanwhile. False when it gave up.
  bool soon(const std::function<bool()>& condition) const;

 private:
  xcb_connection_t* connection_;
  xcb_window_t window_ = 0;
};

}  // namespace nimbletype
