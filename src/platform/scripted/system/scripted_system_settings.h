#pragma once
#include <utility>

#include "platform/system/system_settings.h"

namespace nimbletype {

class ScriptedSystemSettings : public SystemSettings {
 public:
  std::optional<bool> predictionsOn() const override { return predictions; }
  bool switchPredictionsOff() override {
    if (!predictions || !mayChange) return false;
    predictions = false;
    return true;
  }
  bool reducesMotion() const override { return motionReduced; }
  std::optional<bool> prefersDark() const override { return dark; }
  void onChange(std::function<void()> changed) override { changed_ = std::move(changed); }

  void tell() {
    if (changed_) changed_();
  }

  std::optional<bool> predictions, dark;
  bool motionReduced = false, mayChange = true;

 private:
  std::function<void()> changed_;
};

}  // namespace nimbletype
