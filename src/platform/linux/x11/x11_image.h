#pragma once
#include <xcb/xcb.h>

#include <QImage>
#include <QRect>

namespace nimbletype {

// The size of a window in pixels, as a rectangle at zero; empty where there is no such window. One round
// trip.
QRect x11Bounds(xcb_connection_t* connection, xcb_window_t window);

// What is to be seen of a part of a window, which must lie within its bounds; null where it cannot be read.
QImage x11Image(xcb_connection_t* connection, xcb_window_t window, const QRect& part);

}  // namespace nimbletype
