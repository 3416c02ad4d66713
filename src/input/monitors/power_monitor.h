#pragma once
#include "platform/system/main_loop.h"
#include "platform/system/observers.h"
#include "platform/system/power_source.h"

namespace nimbletype {

// Whether the machine runs on battery, for all who want to know. Main thread only.
class PowerMonitor {
 public:
  // The source is read again this often, in case it does not tell.
  static constexpr Milliseconds pollInterval{30'000};

  PowerMonitor(PowerSource& source, MainLoop& loop);
  PowerMonitor(const PowerMonitor&) = delete;
  PowerMonitor& operator=(const PowerMonitor&) = delete;
  ~PowerMonitor();

  bool onBattery() const { return onBattery_; }
  // Told of real changes only, until the task is destroyed.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

 private:
  void readAgain();
  void poll();

  PowerSource& source_;
  MainLoop& loop_;
  bool onBattery_;
  Observers observers_;
  Task timer_;
};

}  // namespace nimbletype
