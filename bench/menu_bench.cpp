// How long the menu takes from a click to its first painting, on the display of the environment.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include "platform/scripted/system/scripted_system_settings.h"
#include "windows/kit/look.h"
#include "windows/menu/qt_menu_panel.h"

namespace nimbletype {
namespace {

class PaintWatch : public QObject {
 public:
  bool painted = false;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched == static_cast<QObject*>(QApplication::activePopupWidget()))
      painted = true;
    return false;
  }
};

void fromClickToPainted(benchmark::State& state) {
  ScriptedSystemSettings settings;
  PaintWatch watch;
  qApp->installEventFilter(&watch);
  QtMenuPanel panel(settings, {});
  const MenuContent content =
      menuContent({.frontApp = "Mail", .wordsToday = 86, .summary = "About 2 min of typing today."}, true);
  for ([[maybe_unused]] const auto round : state) {
    watch.painted = false;
    panel.open(content, BottomLeftRect{900, 860, 24, 24});
    while (!watch.painted) QApplication::processEvents();
    state.PauseTiming();
    panel.close();
    QApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(fromClickToPainted)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  nimbletype::wear(*qApp, nimbletype::lookFor(false));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
