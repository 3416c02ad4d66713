#pragma once

namespace nimbletype {

class PowerSource {
 public:
  virtual ~PowerSource() = default;
  // False as well when the machine has no battery or does not tell.
  virtual bool onBattery() const = 0;
};

}  // namespace nimbletype
