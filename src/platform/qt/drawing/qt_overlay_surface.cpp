#include "platform/qt/drawing/qt_overlay_surface.h"

#include <QBackingStore>
#include <QExposeEvent>
#include <QPainter>
#include <QWindow>

#include "platform/qt/desktop/qt_screens.h"
#include "platform/qt/desktop/screen_background.h"
#include "platform/qt/drawing/overlay_painter.h"

namespace nimbletype {
namespace {

// The colour the application paints where the first line of text is going to stand.
QColor backgroundUnder(const QRegion& covered, const QRect& place) {
  const QRect first = covered.isEmpty() ? QRect(QPoint(), place.size()) : *covered.begin();
  const auto found = backgroundBeside(QRect(first.topLeft() + place.topLeft(), QSize(0, first.height())));
  return found.value_or(QColor(Qt::white));
}

}  // namespace

// Painted when its content is set, not when the desktop asks: a later exposure only copies the picture.
class QtOverlaySurface::Window : public QWindow {
 public:
  explicit Window(const std::function<void(std::uint64_t)>& mark) : store_(this) {
    setSurfaceType(QSurface::RasterSurface);
    setFlags(Qt::FramelessWindowHint | Qt::ToolTip | Qt::BypassWindowManagerHint |
             Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus | Qt::WindowStaysOnTopHint);
    QSurfaceFormat format;
    format.setAlphaBufferSize(8);
    setFormat(format);
    create();
    if (mark) mark(winId());
  }

  void show(const DrawList& list, const QRect& place, bool transparent) {
    const QRegion covered = transparent ? QRegion() : coveredRegion(list, typesetter_);
    const auto background = transparent ? std::nullopt : std::optional(backgroundUnder(covered, place));
    setGeometry(place);
    const QRegion plate = transparent ? QRegion() : roundedPlate(list);
    setMask(plate.isEmpty() ? covered : plate);
    store_.resize(place.size());
    paint([&](QPaintDevice& device) { paintOverlay(device, list, background, typesetter_); });
    setVisible(true);
  }

  // Emptied first: a compositor that fades windows out would leave the text in view.
  void vanish() {
    if (!isVisible()) return;
    if (mask().isEmpty()) paint([](QPaintDevice& device) { paintNothing(device); });
    setVisible(false);
  }

 protected:
  void exposeEvent(QExposeEvent*) override {
    if (isExposed()) store_.flush(all());
  }

 private:
  QRect all() const { return {QPoint(), store_.size()}; }

  template <typename Paint>
  void paint(Paint content) {
    store_.beginPaint(all());
    content(*store_.paintDevice());
    store_.endPaint();
    if (isExposed()) store_.flush(all());
  }

  QtTypesetter typesetter_;
  QBackingStore store_;
};

QtOverlaySurface::QtOverlaySurface(Desktop desktop)
    : window_(std::make_unique<Window>(desktop.mark)), desktop_(std::move(desktop)) {}

QtOverlaySurface::~QtOverlaySurface() = default;

void QtOverlaySurface::show(const DrawList& list) {
  const TopLeftRect place = flipped(list.frame, QtScreens().mainHeight());
  const QRect pixels(qRound(place.x), qRound(place.y), qRound(place.width), qRound(place.height));
  if (pixels.isEmpty()) return hide();
  window_->show(list, pixels, desktop_.mixesWindows());
  if (desktop_.flush) desktop_.flush();
}

void QtOverlaySurface::hide() {
  window_->vanish();
  if (desktop_.flush) desktop_.flush();
}

}  // namespace nimbletype
