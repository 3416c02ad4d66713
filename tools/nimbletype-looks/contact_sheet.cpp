#include "tools/nimbletype-looks/contact_sheet.h"

#include <QPainter>
#include <algorithm>

namespace nimbletype {
namespace {

constexpr int gap = 20, captionHeight = 24;
const QColor paper(0xf4, 0xf4, 0xf4), ink(0x30, 0x30, 0x30);

// Row after row, each as high as its highest picture.
std::vector<QPoint> placesOf(const std::vector<Photo>& photos, int sheetWidth, int& height) {
  std::vector<QPoint> places;
  int x = gap, y = gap, rowHeight = 0;
  for (const Photo& photo : photos) {
    if (x > gap && x + photo.picture.width() > sheetWidth - gap) {
      x = gap;
      y += rowHeight + gap;
      rowHeight = 0;
    }
    places.emplace_back(x, y);
    x += photo.picture.width() + gap;
    rowHeight = std::max(rowHeight, photo.picture.height() + captionHeight);
  }
  height = y + rowHeight + gap;
  return places;
}

}  // namespace

QImage contactSheet(const std::vector<Photo>& photos, int sheetWidth) {
  int height = 0;
  const std::vector<QPoint> places = placesOf(photos, sheetWidth, height);
  QImage sheet(sheetWidth, height, QImage::Format_RGB32);
  sheet.fill(paper);
  QPainter painter(&sheet);
  painter.setPen(ink);
  for (std::size_t i = 0; i < photos.size(); ++i) {
    painter.drawText(QRect(places[i], QSize(sheetWidth, captionHeight)), Qt::AlignLeft | Qt::AlignVCenter,
                     photos[i].caption);
    painter.drawImage(places[i] + QPoint(0, captionHeight), photos[i].picture);
  }
  return sheet;
}

}  // namespace nimbletype
