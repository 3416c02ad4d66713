#include "platform/linux/x11/screen_background.h"

#include <algorithm>
#include <vector>

#include "platform/linux/x11/x11_image.h"
#include "platform/linux/x11/xcb_support.h"

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

std::optional<QColor> backgroundOf(xcb_connection_t* connection, const QRect& place) {
  const xcb_window_t root = rootWindow(connection);
  return commonestColor(x11Image(connection, root, place & x11Bounds(connection, root)));
}

std::optional<QColor> backgroundBeside(xcb_connection_t* connection, const QRect& caret) {
  return backgroundOf(connection,
                      {caret.x() + caret.width(), caret.y(), stripWidth, std::max(1, caret.height())});
}

}  // namespace nimbletype
