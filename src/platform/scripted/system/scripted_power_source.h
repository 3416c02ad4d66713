#pragma once
#include <utility>

#include "platform/system/power_source.h"

namespace nimbletype {

class ScriptedPowerSource : public PowerSource {
 public:
  bool onBattery() const override { return battery; }
  void onChange(std::function<void()> changed) override { changed_ = std::move(changed); }

  // The plug is pulled out or put in, and the desktop says so.
  void setBattery(bool on) {
    battery = on;
    if (changed_) changed_();
  }

  bool battery = false;  // set by itself: a change nobody is told of

 private:
  std::function<void()> changed_;
};

}  // namespace nimbletype
