#pragma once
#include <QImage>
#include <QPoint>
#include <QRegion>

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

// A window of the X server's own pixels, whatever scale Qt draws at, that the window manager, the pointer and
// the keyboard do not see. The server keeps its picture and paints it without being told to. Does nothing
// where there is no X server. Whatever is asked for has been sent when a call returns.
class X11OverlayWindow {
 public:
  X11OverlayWindow();

  // None where there is no X server.
  xcb_connection_t* connection() const { return connection_.get(); }
  // Whether a compositor mixes this window with what lies under it. One short round trip.
  bool isTransparent() const;

  // Above all other windows, with its top left corner at a pixel of the root window. The picture is
  // premultiplied ARGB; only this part of it is there, or all of it where that is empty.
  void show(const QImage& picture, const QPoint& corner, const QRegion& part);
  void hide();

 private:
  void create(const xcb_screen_t& screen);
  void describe() const;
  void setPicture(const QImage& picture) const;
  void send(const QImage& picture, xcb_pixmap_t target) const;
  void cut(const QRegion& part);
  void place(const QRect& place) const;

  XcbConnection connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  xcb_gcontext_t pen_ = XCB_NONE;  // draws nothing, the colour that is see-through
  xcb_atom_t compositor_ = XCB_ATOM_NONE;
  std::uint8_t depth_ = 0;
  bool isShown_ = false, isWhole_ = true;
};

}  // namespace nimbletype
