#include "platform/qt/drawing/overlay_painter.h"

#include <gtest/gtest.h>

#include <QImage>

namespace nimbletype {
namespace {

const FontSpec mono{.name = "Monospace", .size = 14};

// A picture of the list, 120 by 20, as a window would show it.
QImage painted(const DrawList& list, std::optional<QColor> background) {
  QImage image(120, 20, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(1, 2, 3));  // what was there before
  QtTypesetter typesetter;
  paintOverlay(image, list, background, typesetter);
  return image;
}

QRect inkIn(const QImage& image, QRgb ground) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixel(x, y) != ground) ink |= QRect(x, y, 1, 1);
  return ink;
}

TEST(OverlayPainter, TextStandsOnItsBaseline) {
  const DrawList list{{0, 0, 120, 20}, {TextDraw{"HHH", mono, {0.5, 0.5, 0.5, 0.9}, 10, 6}}};
  const QImage image = painted(list, std::nullopt);
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
  const QRect ink = inkIn(image, 0);
  EXPECT_EQ(ink.bottom(), 20 - 6 - 1);
  EXPECT_GE(ink.left(), 10);
  EXPECT_LT(ink.left(), 13);
}

TEST(OverlayPainter, WithoutTransparencyEverythingStandsOnTheBackground) {
  const QColor ground(40, 44, 52);
  const DrawList list{{0, 0, 120, 20}, {BoxDraw{{60, 0, 60, 20}, 4, {0.5, 0.5, 0.5, 0.25}}}};
  const QImage image = painted(list, ground);
  EXPECT_EQ(image.pixelColor(5, 5), ground);
  const QColor box = image.pixelColor(90, 10);
  EXPECT_EQ(box.alpha(), 255);
  EXPECT_NEAR(box.red(), 40 + (128 - 40) / 4, 1);
}

TEST(OverlayPainter, CoversTextAndBoxesButNotTheCaret) {
  QtTypesetter typesetter;
  const DrawList list{{0, 0, 120, 40}, {BoxDraw{{0, 0, 50, 15}, 4, {}}, TextDraw{"HHH", mono, {}, 60, 26}}};
  const QRegion covered = coveredRegion(list, typesetter);
  EXPECT_TRUE(covered.contains(QPoint(0, 39)));    // the box
  EXPECT_FALSE(covered.contains(QPoint(60, 10)));  // where the application's caret stands
  EXPECT_TRUE(covered.contains(QPoint(61, 10)));
  EXPECT_FALSE(covered.contains(QPoint(55, 35)));  // between box and text
  EXPECT_FALSE(covered.contains(QPoint(110, 10)));
}

}  // namespace
}  // namespace nimbletype
