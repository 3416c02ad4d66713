#pragma once
#include "platform/power_source.h"

namespace nimbletype {

class MacPowerSource final : public PowerSource {
 public:
  bool onBattery() const override;
};

}  // namespace nimbletype
