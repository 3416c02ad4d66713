#pragma once
#include <gtest/gtest.h>

#include "platform/system/login_item.h"

// What every `LoginItem` must do. Instantiate with a default-constructible harness whose user starts nothing
// at login, and that has
//   LoginItem& item();
//   void refuse();       the desktop takes no change from now on
namespace nimbletype {

template <typename Harness>
struct LoginItemConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(LoginItemConformance);

TYPED_TEST_P(LoginItemConformance, IsWhatTheDesktopSays) {
  LoginItem& item = this->item();
  EXPECT_FALSE(item.isOn());
  for (const bool on : {false, true, true, false, false, true}) {
    EXPECT_TRUE(item.set(on).has_value());
    EXPECT_EQ(item.isOn(), on);
  }
  this->refuse();
  const auto refused = item.set(false);
  ASSERT_FALSE(refused.has_value());
  EXPECT_FALSE(refused.error().empty());
  EXPECT_TRUE(item.isOn());
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemConformance, IsWhatTheDesktopSays);

}  // namespace nimbletype
