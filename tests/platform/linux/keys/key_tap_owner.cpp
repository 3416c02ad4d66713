// Owns a tap on the display named by its argument and takes every Tab; says so on its standard output.
#include <QCoreApplication>
#include <cstdio>
#include <vector>

#include "platform/linux/keys/xcb_event_tap.h"
#include "platform/qt/system/qt_main_loop.h"

int main(int argc, char** argv) {
  using namespace nimbletype;
  QCoreApplication application(argc, argv);
  QtMainLoop loop;
  XcbEventTap tap(loop, argc > 1 ? argv[1] : "");
  const KeyCombo tab{key::tab, {}};
  const bool started = tap.start([&](const TapEvent& event) {
    const auto* press = std::get_if<KeyPress>(&event);
    if (!press || press->combo() != tab) return false;
    std::puts("taken");
    std::fflush(stdout);
    return true;
  });
  if (!started) return 1;
  tap.setTakeable(std::vector{tab});
  return application.exec();
}
