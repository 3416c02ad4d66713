#pragma once
#include "platform/system/system_settings.h"
#include "platform/system/task.h"

namespace nimbletype {

// Needs NSApp.
class MacSystemSettings final : public SystemSettings {
 public:
  std::optional<bool> predictionsOn() const override;
  bool switchPredictionsOff() override;
  bool reducesMotion() const override;
  std::optional<bool> prefersDark() const override;
  void onChange(std::function<void()> changed) override;

 private:
  Task displayOptions_, appearance_;
};

}  // namespace nimbletype
