#pragma once
#include <gtest/gtest.h>

#include "platform/system/system_settings.h"

// What every `SystemSettings` must do, whatever the user has chosen. Instantiate with a default-constructible
// harness that has
//   SystemSettings& settings();
namespace nimbletype {

template <typename Harness>
struct SystemSettingsConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(SystemSettingsConformance);

TYPED_TEST_P(SystemSettingsConformance, SwitchesOffWhatThereIs) {
  SystemSettings& settings = this->settings();
  int told = 0;
  settings.onChange([&] { ++told; });
  settings.onChange({});
  const bool has = settings.predictionsOn().has_value();
  EXPECT_EQ(settings.switchPredictionsOff(), has);
  EXPECT_EQ(settings.predictionsOn(), has ? std::optional(false) : std::nullopt);
  EXPECT_EQ(told, 0);
}

REGISTER_TYPED_TEST_SUITE_P(SystemSettingsConformance, SwitchesOffWhatThereIs);

}  // namespace nimbletype
