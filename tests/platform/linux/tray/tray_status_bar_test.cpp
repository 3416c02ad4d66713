#include "platform/linux/tray/tray_status_bar.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "tests/platform/desktop/status_bar_conformance.h"
#include "tools/stage/desktop_session.h"
#include "tools/stage/user_keyboard.h"
#include "tools/stage/waiting.h"

// One kind of tray a process: Qt asks once which there is.
namespace nimbletype {
namespace {

QIcon redSquare(const StatusIcon&) {
  QPixmap picture(64, 64);
  picture.fill(Qt::red);
  return picture;
}

// A panel that takes items in as windows.
struct PanelHarness : RealTime {
  PanelHarness() {
    user.emplace();
    status.emplace(redSquare);
    startPanel();
  }
  StatusBar& bar() { return *status; }
  void startPanel() { panel.emplace(std::vector<std::string>{"tint2"}); }
  QPoint middle() const {
    const auto frame = status->place().frame.value_or(BottomLeftRect{});
    const double height = QGuiApplication::primaryScreen()->geometry().height();
    return {static_cast<int>(frame.x + frame.width / 2),
            static_cast<int>(height - frame.y - frame.height / 2)};
  }
  bool isDrawn() const {
    const QPoint at = middle();
    const QPixmap pixel = QGuiApplication::primaryScreen()->grabWindow(0, at.x(), at.y(), 1, 1);
    return pixel.toImage().pixelColor(0, 0) == Qt::red;
  }
  void click(std::uint8_t button = 1) {
    waitFor("the item drawn", [&] { return isDrawn(); });
    user->movePointer(middle().x(), middle().y());
    user->click(button);
  }

  std::optional<TrayStatusBar> status;
  std::optional<DesktopProgram> panel;
  std::optional<UserKeyboard> user;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Panel, StatusBarConformance, PanelHarness);

TEST(TrayStatusBar, ComesBackWithThePanel) {
  PanelHarness desk;
  StatusBar& bar = desk.bar();
  int moves = 0;
  bar.onPlaceChange([&] { ++moves; });
  bar.show({"pencil.and.scribble", "", "Ready"});
  for (int round = 0; round < 3; ++round) {
    waitFor("the item in the panel", [&] { return bar.place().isHosted; });
    waitFor("word of it", [&] { return moves > 0; });
    kill(desk.panel->processID(), SIGKILL);
    moves = 0;
    waitFor("the panel's loss noticed", [&] { return moves > 0 && !bar.place().isHosted; });
    moves = 0;
    desk.startPanel();
  }
}

TEST(TrayStatusBar, AnswersAnyButton) {
  PanelHarness desk;
  int clicks = 0;
  desk.bar().onClick([&] { ++clicks; });
  desk.bar().show({"pencil.and.scribble", "", "Ready"});
  waitFor("the item in the panel", [&] { return desk.bar().place().isHosted; });
  for (const int button : {1, 2, 3}) {
    desk.click(static_cast<std::uint8_t>(button));
    waitFor("word of button " + std::to_string(button), [&] { return clicks == button; });
  }
}

// A tray over the session bus, which tells no place and clicks with calls.
struct NotifierHarness : RealTime {
  NotifierHarness() {
    session.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    status.emplace(redSquare);
    startTray();
  }
  StatusBar& bar() { return *status; }
  void startTray() {
    // The bus's modules are packages of the system's own Python.
    tray.emplace(
        std::vector<std::string>{"/usr/bin/python3", "tests/platform/linux/desktop/notifier_tray.py"});
  }
  // The answer comes after what it asked for was done.
  VariantPtr call(const DBusCall& call) const {
    VariantPtr answer;
    bool isAnswered = false;
    const Task task = dbusRequest(session.get(), call, [&](GVariant* reply) {
      answer.reset(reply ? g_variant_ref(reply) : nullptr);
      isAnswered = true;
    });
    waitFor("an answer to " + call.method, [&] { return isAnswered; });
    return answer;
  }
  void click() const {
    constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
    const auto reply = call({watcher, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties", "Get",
                             g_variant_new("(ss)", watcher, "RegisteredStatusNotifierItems")});
    const VariantPtr items(g_variant_get_variant(childOf(reply.get(), 0).get()));
    const std::string item = stringOf(childOf(items.get(), g_variant_n_children(items.get()) - 1).get());
    call({item.substr(0, item.find('/')), "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
          g_variant_new("(ii)", 5, 5)});
  }

  GObjectPtr<GDBusConnection> session;
  std::optional<TrayStatusBar> status;
  std::optional<DesktopProgram> tray;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Notifier, StatusBarConformance, NotifierHarness);

TEST(NotifierStatusBar, ComesBackWithTheTrayAndTakesADoubleClickForOne) {
  NotifierHarness desk;
  StatusBar& bar = desk.bar();
  int moves = 0, clicks = 0;
  bar.onPlaceChange([&] { ++moves; });
  bar.onClick([&] { ++clicks; });
  bar.show({"pencil.and.scribble", "", "Ready"});
  waitFor("the item in the tray", [&] { return moves == 1 && bar.place().isHosted; });
  EXPECT_FALSE(bar.place().frame);
  kill(desk.tray->processID(), SIGKILL);
  waitFor("the tray's loss noticed", [&] { return moves == 2 && !bar.place().isHosted; });
  desk.startTray();
  waitFor("the item in the next tray", [&] { return moves == 3 && bar.place().isHosted; });
  QApplication::setDoubleClickInterval(100'000);
  desk.click();
  desk.click();
  QApplication::setDoubleClickInterval(0);
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  if (!nimbletype::DesktopSession::start()) return 1;
  const QApplication application(argc, argv);
  QApplication::setDoubleClickInterval(0);  // clicks follow each other fast here
  return RUN_ALL_TESTS();
}
