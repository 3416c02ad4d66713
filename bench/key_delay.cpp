// What the tap costs a key on its way to the application, on a private display: the time from the user's
// press to the application's event, without a tap, with one that is not asked about the key, and with one
// that is asked and passes it on; and from the press to the handler for a key that is taken.
#include <QCoreApplication>
#include <QSocketNotifier>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

#include "platform/linux/keys/xcb_event_tap.h"
#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/linux/keys/key_window.h"
#include "tools/stage/private_display.h"
#include "tools/stage/user_keyboard.h"

namespace nimbletype {
namespace {

using Clock = std::chrono::steady_clock;
using Condition = std::function<bool()>;

constexpr int rounds = 500;
constexpr KeyCombo tab{key::tab, {}};

// Sleeps until there is something new, as an application does.
void waitFor(const Condition& condition) {
  while (!condition()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void printRow(const char* name, std::vector<double> milliseconds) {
  std::ranges::sort(milliseconds);
  const auto at = [&](double part) { return milliseconds[static_cast<std::size_t>(part * (rounds - 1))]; };
  std::printf("%-44s %8.3f %8.3f %8.3f\n", name, at(0.5), at(0.95), at(1));
}

// Presses Tab again and again; each time until the condition holds.
void measure(const char* name, UserKeyboard& user, const std::function<void()>& prepare,
             const Condition& arrived) {
  std::vector<double> times;
  for (int i = 0; i < rounds; ++i) {
    prepare();
    const auto start = Clock::now();
    user.down(key::tab);
    waitFor(arrived);
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    user.up(key::tab);
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  printRow(name, times);
}

void run() {
  PrivateDisplay display;
  QtMainLoop loop;
  KeyWindow window(display.name());
  QSocketNotifier windowEvents(window.descriptor(), QSocketNotifier::Read);
  UserKeyboard user(display.name());
  XcbEventTap tap(loop, display.name());
  int taken = 0;
  bool takes = false;
  const auto clear = [&] { window.keys.clear(), taken = 0; };
  const auto received = [&] { return window.read(), !window.keys.empty(); };
  const auto takeable = [&](std::vector<KeyCombo> keys) {
    tap.setTakeable(keys);
    while (window.isGrabbed(tab) == keys.empty()) QCoreApplication::processEvents();
  };

  std::printf("%-44s %8s %8s %8s\n", "Tab, ms from the press", "median", "95 %", "most");
  measure("to the application, no tap", user, clear, received);
  const bool started = tap.start([&](const TapEvent& event) {
    const auto* press = std::get_if<KeyPress>(&event);
    return takes && press && press->combo() == tab && ++taken > 0;
  });
  if (!started) return;
  measure("to the application, tap not asked", user, clear, received);
  takeable({tab});
  measure("to the application, tap asked and passing on", user, clear, received);
  takes = true;
  measure("to the handler that takes it", user, clear, [&] { return taken > 0; });
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  nimbletype::run();
}
