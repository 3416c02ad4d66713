#pragma once
#include "platform/system/system_settings.h"

namespace nimbletype {

class LinuxSystemSettings final : public SystemSettings {
 public:
  std::optional<bool> predictionsOn() const override { return std::nullopt; }
  bool switchPredictionsOff() override { return false; }
  bool reducesMotion() const override { return false; }
  std::optional<bool> prefersDark() const override { return std::nullopt; }
  void onChange(std::function<void()>) override {}
};

}  // namespace nimbletype
