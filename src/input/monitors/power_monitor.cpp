#include "input/monitors/power_monitor.h"

#include "platform/system/beat.h"

namespace nimbletype {

PowerMonitor::PowerMonitor(PowerSource& source, MainLoop& loop)
    : source_(source), loop_(loop), onBattery_(source.onBattery()) {
  source_.onChange([this] { readAgain(); });
  poll();
}

PowerMonitor::~PowerMonitor() {
  source_.onChange({});
}

void PowerMonitor::poll() {
  timer_ = loop_.after(untilBeat(loop_, pollInterval), [this] {
    poll();
    readAgain();
  });
}

void PowerMonitor::readAgain() {
  const bool now = source_.onBattery();
  if (now == onBattery_) return;
  onBattery_ = now;
  observers_.notify();
}

}  // namespace nimbletype
