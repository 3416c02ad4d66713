#pragma once
#include <functional>

namespace nimbletype {

// Where the machine's power comes from. Main thread only.
class PowerSource {
 public:
  virtual ~PowerSource() = default;
  // False as well when the machine has no battery or does not tell.
  virtual bool onBattery() const = 0;
  // Called after the answer may have become another one, by adapters that hear of it. One listener; an empty
  // function ends it.
  virtual void onChange(std::function<void()> changed) = 0;
};

}  // namespace nimbletype
