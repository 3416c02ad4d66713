#pragma once
#include "platform/system/system_settings.h"

namespace nimbletype {

class MacSystemSettings final : public SystemSettings {
 public:
  std::optional<bool> predictionsOn() const override;
  bool switchPredictionsOff() override;
  bool reducesMotion() const override;
  std::optional<bool> prefersDark() const override;
  void onChange(std::function<void()> changed) override;
};

}  // namespace nimbletype
