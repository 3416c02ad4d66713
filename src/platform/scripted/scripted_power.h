#pragma once
#include "platform/power_source.h"

namespace nimbletype {

class ScriptedPower : public PowerSource {
 public:
  bool onBattery() const override { return battery; }

  bool battery = false;
};

}  // namespace nimbletype
