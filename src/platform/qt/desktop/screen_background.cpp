#include "platform/qt/desktop/screen_background.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <algorithm>
#include <vector>

namespace nimbletype {
namespace {

// Wide enough to hold more background than letters, narrow enough to stay in most fields.
constexpr int stripWidth = 16;

}  // namespace

std::optional<QColor> commonestColor(const QImage& image) {
  if (image.isNull()) return std::nullopt;
  const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
  std::vector<QRgb> all;
  all.reserve(static_cast<std::size_t>(pixels.width()) * static_cast<std::size_t>(pixels.height()));
  for (int y = 0; y < pixels.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
    all.insert(all.end(), row, row + pixels.width());
  }
  std::ranges::sort(all);
  QRgb best = all.front();
  std::ptrdiff_t most = 0;
  for (auto it = all.begin(); it != all.end();) {
    const auto end = std::ranges::upper_bound(it, all.end(), *it);
    if (end - it > most) {
      most = end - it;
      best = *it;
    }
    it = end;
  }
  return QColor::fromRgb(best);
}

std::optional<QColor> backgroundOf(const QRect& place) {
  QScreen* screen = QGuiApplication::screenAt(place.topLeft());
  if (!screen) return std::nullopt;
  const QRect seen = place & screen->geometry();
  if (seen.isEmpty()) return std::nullopt;
  const QPoint inScreen = seen.topLeft() - screen->geometry().topLeft();
  return commonestColor(
      screen->grabWindow(0, inScreen.x(), inScreen.y(), seen.width(), seen.height()).toImage());
}

std::optional<QColor> backgroundBeside(const QRect& caret) {
  return backgroundOf({caret.x() + caret.width(), caret.y(), stripWidth, std::max(1, caret.height())});
}

}  // namespace nimbletype
