#include "platform/qt/desktop/screen_background.h"

#include <gtest/gtest.h>

#include <QPainter>

namespace nimbletype {
namespace {

TEST(ScreenBackground, IsTheColorBehindText) {
  QImage image(16, 18, QImage::Format_ARGB32);
  image.fill(QColor(40, 44, 52));
  QPainter painter(&image);
  painter.setPen(QColor(230, 230, 230));
  painter.drawText(0, 14, "wM");
  painter.end();
  EXPECT_EQ(commonestColor(image), QColor(40, 44, 52));
  EXPECT_EQ(commonestColor(QImage()), std::nullopt);
  EXPECT_EQ(backgroundBeside(QRect(-50000, 0, 0, 18)), std::nullopt);  // on no screen
}

}  // namespace
}  // namespace nimbletype
