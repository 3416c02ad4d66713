#include "windows/kit/placing.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "platform/system/desktop_kind.h"
#include "windows/kit/look.h"

namespace nimbletype {
namespace {

// How many units of the overlay space a logical pixel of this screen has. Only on Linux do they differ.
qreal unitsOf(const QScreen& screen) {
  return onMac ? 1 : screen.devicePixelRatio();
}

QRectF ownRect(const QScreen& screen) {
  return {screen.geometry().topLeft(), QSizeF(screen.geometry().size()) * unitsOf(screen)};
}

}  // namespace

QRect toWindowSpace(const BottomLeftRect& place) {
  const QList<QScreen*> screens = QGuiApplication::screens();
  if (screens.isEmpty()) return {};
  const auto main = std::ranges::find_if(
      screens, [](const QScreen* screen) { return screen->geometry().topLeft().isNull(); });
  const QScreen& origin = main == screens.end() ? *screens.front() : **main;
  const TopLeftRect own = flipped(place, ownRect(origin).height());
  const QRectF rect(own.x, own.y, own.width, own.height);
  const auto found =
      std::ranges::find_if(screens, [&](const QScreen* s) { return ownRect(*s).contains(rect.center()); });
  const QScreen& screen = found == screens.end() ? origin : **found;
  const QPointF corner = screen.geometry().topLeft();
  const qreal units = unitsOf(screen);
  return QRectF(corner + (rect.topLeft() - corner) / units, rect.size() / units).toRect();
}

TopLeftRect fromWindowSpace(const QRectF& place, const QScreen& screen) {
  const QPointF origin = screen.geometry().topLeft();
  const qreal units = unitsOf(screen);
  const QPointF corner = origin + (place.topLeft() - origin) * units;
  return {corner.x(), corner.y(), place.width() * units, place.height() * units};
}

QPoint panelPlace(const QSize& panel, const QRect& item, const QRect& screen, bool rightToLeft) {
  const int left = rightToLeft ? item.left() + item.width() - panel.width() : item.left();
  const int below = item.top() + item.height() + space::hair;
  const int above = item.top() - space::hair - panel.height();
  const int bottom = screen.top() + screen.height();
  const int top = below + panel.height() <= bottom || above < screen.top() ? below : above;
  return {std::clamp(left, screen.left(),
                     std::max(screen.left(), screen.left() + screen.width() - panel.width())),
          std::clamp(top, screen.top(), std::max(screen.top(), bottom - panel.height()))};
}

void bringToFront(QWidget& window, Focus focus) {
  if (!window.isVisible()) {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (screen) window.move(screen->availableGeometry().center() - window.rect().center());
  }
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.setAttribute(Qt::WA_ShowWithoutActivating, focus == Focus::left);
  window.show();
  window.raise();
  if (focus == Focus::taken) window.activateWindow();
}

}  // namespace nimbletype
