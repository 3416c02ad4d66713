#pragma once
#include <optional>

#include "platform/mac/bridge/cf_ref.h"
#include "platform/system/power_source.h"

namespace nimbletype {

class MacPowerSource final : public PowerSource {
 public:
  MacPowerSource() = default;
  MacPowerSource(const MacPowerSource&) = delete;
  MacPowerSource& operator=(const MacPowerSource&) = delete;

  bool onBattery() const override;
  void onChange(std::function<void()> changed) override;

 private:
  std::function<void()> changed_;
  std::optional<MainRunLoopSource> source_;
};

}  // namespace nimbletype
