#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPainter>
#include <memory>
#include <set>

#include "platform/linux/desktop/x11_screens.h"
#include "platform/linux/drawing/x11_overlay_surface.h"
#include "platform/linux/x11/screen_background.h"
#include "platform/linux/x11/x11_font_resolution.h"
#include "platform/qt/drawing/overlay_painter.h"
#include "tests/platform/linux/drawing/x11_client.h"
#include "tools/stage/private_display.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t dark = 0x202830, ghostGrey = 0x8C8C8C;

class X11OverlayTest : public testing::Test {
 protected:
  // A box stands for a letter: its middle has one known colour.
  DrawList list() const {
    const double top = screens.mainHeight() - 100;
    const TextDraw text{"HHH", {.name = "Monospace", .size = 14}, {0.55, 0.55, 0.55, 1}, 0, 5};
    return {{200, top - 20, 160, 20}, {text, BoxDraw{{100, 0, 60, 20}, 0, {0.55, 0.55, 0.55, 1}}}};
  }
  static constexpr QPoint inText{202, 101}, besideText{250, 110}, inBox{330, 110}, atCaret{200, 110};

  xcb_window_t overlay() const { return application.topmost(); }
  bool boxIs(std::uint32_t color) const {
    return application.soon([&] { return application.pixelAt(inBox) == color; });
  }

  void showAndWait() {
    surface.show(list());
    ASSERT_TRUE(boxIs(ghostGrey)) << "the box did not come";
  }

  X11Client application{{100, 50, 500, 300}, dark};
  X11Screens screens;
  X11OverlaySurface surface{screens};
};

TEST_F(X11OverlayTest, TakesNeitherFocusNorPointer) {
  ASSERT_EQ(application.focus(), application.window());
  showAndWait();
  EXPECT_EQ(application.focus(), application.window());
  EXPECT_TRUE(application.shapeOf(overlay(), X11Client::Shape::input).isEmpty());
  surface.hide();
  EXPECT_EQ(application.focus(), application.window());
}

TEST_F(X11OverlayTest, WithoutACompositorItCoversOnlyItsTextInTheApplicationsColor) {
  showAndWait();
  const QRegion shape = application.shapeOf(overlay(), X11Client::Shape::bounding);
  const QPoint origin(200, 100);
  EXPECT_FALSE(shape.contains(atCaret - origin));
  EXPECT_FALSE(shape.contains(besideText - origin));
  EXPECT_TRUE(shape.contains(inBox - origin));
  EXPECT_EQ(application.pixelAt(inText + QPoint(0, 2)), dark);  // above the letters, filled
  EXPECT_EQ(application.pixelAt(besideText), dark);
}

TEST_F(X11OverlayTest, FollowsTheCompositor) {
  application.ownSelection("_NET_WM_CM_S0", true);
  showAndWait();
  const QRegion whole(0, 0, 160, 20);
  EXPECT_EQ(application.shapeOf(overlay(), X11Client::Shape::bounding), whole);
  application.ownSelection("_NET_WM_CM_S0", false);
  surface.hide();
  showAndWait();
  EXPECT_NE(application.shapeOf(overlay(), X11Client::Shape::bounding), whole);
}

TEST_F(X11OverlayTest, CoveredItComesBackByItselfOrAboveAllWhenShownAnew) {
  showAndWait();
  auto other = std::make_unique<X11Client>(QRect(300, 60, 200, 200), 0xFFFFF0);
  EXPECT_TRUE(boxIs(0xFFFFF0));
  other.reset();
  EXPECT_TRUE(boxIs(ghostGrey));
  other = std::make_unique<X11Client>(QRect(300, 60, 200, 200), 0xFFFFF0);
  surface.hide();
  showAndWait();
}

TEST_F(X11OverlayTest, NewContentIsThereAtOnceEvenWhereNoRequestHoldsIt) {
  showAndWait();
  const double width = 4000, height = 3000;
  surface.show(
      {{0, screens.mainHeight() - 300, width, height}, {BoxDraw{{0, 0, width, 200}, 0, {1, 1, 1, 1}}}});
  EXPECT_TRUE(boxIs(0xFFFFFF));
}

TEST_F(X11OverlayTest, ScreensTellWhatIsBehindTheCaret) {
  const auto isDarkAt = [&](double x, double y) {
    return screens.isDarkAt(flipped(TopLeftRect(x, y, 1, 18), screens.mainHeight()));
  };
  const X11Client paper({300, 60, 200, 200}, 0xFFFFF0);
  EXPECT_FALSE(isDarkAt(350, 100));
  EXPECT_TRUE(isDarkAt(150, 100));
  EXPECT_EQ(backgroundBeside(application.connection(), {-50000, 0, 0, 18}), std::nullopt);  // on no screen
}

TEST_F(X11OverlayTest, ScreensAreThoseOfTheServerLessItsPanels) {
  const QRect screen = application.placeOf(rootWindow(application.connection()));
  const BottomLeftRect whole{0, 0, 1.0 * screen.width(), 1.0 * screen.height()};
  EXPECT_EQ(screens.all(), std::vector({Screen{whole, whole}}));
  application.leaveFree({0, 30, screen.width(), screen.height() - 70});
  const BottomLeftRect free{0, 40, whole.width, whole.height - 70};
  waitFor("the panels to be noticed", [&] { return screens.all()[0] == Screen{whole, free}; });
}

TEST(ScreenBackground, IsTheColorBehindText) {
  QImage image(16, 18, QImage::Format_ARGB32);
  image.fill(QColor(40, 44, 52));
  QPainter painter(&image);
  painter.setPen(QColor(230, 230, 230));
  painter.drawText(0, 14, "wM");
  painter.end();
  EXPECT_EQ(commonestColor(image), QColor(40, 44, 52));
  EXPECT_EQ(commonestColor(QImage()), std::nullopt);
}

// As applications' text is, which begins and ends on whole rows.
TEST(QtTypesetter, HintsTextWhateverScaleQtDrawsAt) {
  QtTypesetter typesetter;
  QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
  const TextDraw bar{"l", {.name = "DejaVu Sans", .size = 14}, {}, 4, 5};
  paintOverlay(image, {{0, 0, 20, 20}, {bar}}, QColor(Qt::white), typesetter);
  std::set<QByteArray> kinds;
  for (int y = 0; y < image.height(); ++y)
    kinds.insert(QByteArray(reinterpret_cast<const char*>(image.constScanLine(y)), image.bytesPerLine()));
  EXPECT_EQ(kinds.size(), 2U);
}

TEST(FontResolution, IsWhatTheResourcesSay) {
  for (const auto& [resources, expected] :
       {std::pair{"Xcursor.size:\t24\nXft.dpi:\t120\nXft.rgba:\tnone\n", 120.0},
        {"Xft.dpi: 122.5", 122.5},
        {"*Xft.dpi:\t120\nXft.dpi:\tx", 96.0},
        {"", 96.0}})
    EXPECT_EQ(fontDotsPerInchIn(resources), expected) << resources;
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  const nimbletype::PrivateDisplay display;
  qputenv("DISPLAY", QByteArray::fromStdString(display.name()));
  qputenv("QT_QPA_PLATFORM", "xcb");
  qputenv("QT_SCALE_FACTOR", "2");  // which is for Qt's windows alone
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
