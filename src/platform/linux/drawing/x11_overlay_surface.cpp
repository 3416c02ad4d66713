#include "platform/linux/drawing/x11_overlay_surface.h"

#include "platform/linux/x11/screen_background.h"
#include "platform/qt/drawing/overlay_painter.h"

namespace nimbletype {
namespace {

// The colour the application paints where the first line of text is going to stand.
QColor backgroundUnder(xcb_connection_t* connection, const QRegion& covered, const QRect& place) {
  const QRect first = covered.isEmpty() ? QRect(QPoint(), place.size()) : *covered.begin();
  const auto found =
      backgroundBeside(connection, QRect(first.topLeft() + place.topLeft(), QSize(0, first.height())));
  return found.value_or(QColor(Qt::white));
}

}  // namespace

void X11OverlaySurface::show(const DrawList& list) {
  const TopLeftRect frame = flipped(list.frame, screens_.mainHeight());
  const QRect place(qRound(frame.x), qRound(frame.y), qRound(frame.width), qRound(frame.height));
  if (place.isEmpty() || !window_.connection()) return hide();
  QImage picture(place.size(), QImage::Format_ARGB32_Premultiplied);
  if (window_.isTransparent()) {
    paintOverlay(picture, list, std::nullopt, typesetter_);
    return window_.show(picture, place.topLeft(), {});
  }
  const QRegion covered = coveredRegion(list, typesetter_), plate = roundedPlate(list);
  paintOverlay(picture, list, backgroundUnder(window_.connection(), covered, place), typesetter_);
  window_.show(picture, place.topLeft(), plate.isEmpty() ? covered : plate);
}

}  // namespace nimbletype
