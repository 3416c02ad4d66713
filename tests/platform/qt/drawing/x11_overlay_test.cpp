#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QWindow>

#include "platform/linux/drawing/x11_overlay_hints.h"
#include "platform/qt/desktop/qt_screens.h"
#include "platform/qt/drawing/qt_overlay_surface.h"
#include "tests/platform/qt/drawing/x11_client.h"
#include "tools/stage/private_display.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

constexpr std::uint32_t dark = 0x202830, ghostGrey = 0x8C8C8C;

class X11OverlayTest : public testing::Test {
 protected:
  // A box stands for a letter: its middle has one known colour.
  static DrawList list() {
    const double top = QtScreens().mainHeight() - 100;
    const TextDraw text{"HHH", {.name = "Monospace", .size = 14}, {0.55, 0.55, 0.55, 1}, 0, 5};
    return {{200, top - 20, 160, 20}, {text, BoxDraw{{100, 0, 60, 20}, 0, {0.55, 0.55, 0.55, 1}}}};
  }
  static constexpr QPoint inText{202, 101}, besideText{250, 110}, inBox{330, 110}, atCaret{200, 110};

  xcb_window_t overlay() const {
    for (const QWindow* window : QGuiApplication::allWindows())
      return static_cast<xcb_window_t>(window->winId());
    return 0;
  }

  void showAndWait() {
    surface.show(list());
    waitFor("the box on screen", [&] { return application.pixelAt(inBox) == ghostGrey; });
  }

  X11Client application{{100, 50, 500, 300}, dark};
  QtOverlaySurface surface{{x11MixesWindows, x11MarkOverlay, x11Flush}};
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
  ASSERT_FALSE(x11MixesWindows());
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
  EXPECT_TRUE(x11MixesWindows());
  showAndWait();
  const QRegion whole(0, 0, 160, 20);
  EXPECT_EQ(application.shapeOf(overlay(), X11Client::Shape::bounding), whole);
  application.ownSelection("_NET_WM_CM_S0", false);
  EXPECT_FALSE(x11MixesWindows());
  surface.hide();
  showAndWait();
  EXPECT_NE(application.shapeOf(overlay(), X11Client::Shape::bounding), whole);
}

// What is asked for reaches the server when the call returns, not when Qt next handles events.
TEST_F(X11OverlayTest, HiddenMeansGoneAtOnce) {
  showAndWait();
  surface.hide();
  EXPECT_TRUE(application.soon([&] { return !application.isMapped(overlay()); }))
      << "the window stayed mapped";
}

TEST_F(X11OverlayTest, NewContentIsOnScreenAtOnce) {
  showAndWait();
  DrawList other = list();
  std::get<BoxDraw>(other.items[1]).fill = {1, 1, 1, 1};
  surface.show(other);
  EXPECT_TRUE(application.soon([&] { return application.pixelAt(inBox) == 0xFFFFFFU; }))
      << "the old box stayed";
}

TEST_F(X11OverlayTest, ScreensTellWhatIsBehindTheCaret) {
  const QtScreens screens;
  const auto at = [&](double x, double y) { return flipped(TopLeftRect(x, y, 1, 18), screens.mainHeight()); };
  const X11Client paper({300, 60, 200, 200}, 0xFFFFF0);
  waitFor("paper to be taken for light", [&] { return !screens.isDarkAt(at(350, 100)); });
  EXPECT_TRUE(screens.isDarkAt(at(150, 100)));
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  const nimbletype::PrivateDisplay display;
  qputenv("DISPLAY", QByteArray::fromStdString(display.name()));
  qputenv("QT_QPA_PLATFORM", "xcb");
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
