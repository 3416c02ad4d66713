#include "platform/linux/x11/x11_picture.h"

#include <cstdint>

#include "platform/linux/x11/x11_image.h"
#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {
namespace {

constexpr int leastSide = 40;  // pixels; nothing smaller holds text worth reading

std::string greyTwiceAsLarge(const QImage& picture) {
  const int width = picture.width(), height = picture.height();
  std::string pgm = "P5\n" + std::to_string(2 * width) + " " + std::to_string(2 * height) + "\n255\n";
  pgm.reserve(pgm.size() + 4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y) {
    const auto* pixels = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    std::string row;
    for (int x = 0; x < width; ++x) {
      const QRgb p = pixels[x];
      row.append(2, static_cast<char>((qBlue(p) * 29 + qGreen(p) * 150 + qRed(p) * 77) >> 8));
    }
    pgm += row;
    pgm += row;
  }
  return pgm;
}

}  // namespace

std::optional<X11Picture> x11PictureOf(const TopLeftRect& frame) {
  const XcbConnection connection = connectToDisplay("");
  if (!connection) return std::nullopt;
  const xcb_window_t root = rootWindow(connection.get());
  // What lies off the screen cannot be had.
  const QRect seen =
      QRect(QPoint(static_cast<int>(frame.x), static_cast<int>(frame.y)),
            QPoint(static_cast<int>(frame.right()) - 1, static_cast<int>(frame.bottom()) - 1)) &
      x11Bounds(connection.get(), root);
  if (seen.width() < leastSide || seen.height() < leastSide) return std::nullopt;
  const QImage picture = x11Image(connection.get(), root, seen);
  if (picture.isNull()) return std::nullopt;
  return X11Picture{greyTwiceAsLarge(picture), static_cast<double>(seen.x()), static_cast<double>(seen.y())};
}

}  // namespace nimbletype
