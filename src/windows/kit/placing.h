#pragma once
#include <QPoint>
#include <QRect>
#include <QSize>

#include "platform/desktop/geometry.h"

class QScreen;
class QWidget;

namespace nimbletype {

// A place of the overlay space, which on Linux counts the screen's own pixels, as Qt's windows count: top
// left, in the logical pixels of the screen it lies on.
QRect toWindowSpace(const BottomLeftRect& place);

// The other way: a rectangle of a window that belongs to this screen, in the logical pixels of the desktop.
TopLeftRect fromWindowSpace(const QRectF& place, const QScreen& screen);

// Where a panel of this size goes: its near corner just under the item, or at the pointer without one; always
// inside the screen, above the item where there is no room below.
QPoint panelPlace(const QSize& panel, const QRect& item, const QRect& screen, bool rightToLeft);

// Shows a window in front of all others, in the middle of the pointer's screen where it was not shown. One
// that nobody asked for leaves the keyboard to the application that is written in.
enum class Focus { taken, left };
void bringToFront(QWidget& window, Focus focus = Focus::taken);

}  // namespace nimbletype
