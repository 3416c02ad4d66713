#pragma once
#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "platform/system/power_source.h"

// What every `PowerSource` that hears of changes must do. Instantiate with a default-constructible harness
// that has
//   PowerSource& power();                                  // plugged in at first
//   void setBattery(bool on);
//   bool runUntil(const std::function<bool()>& done);      // false when it never came true
namespace nimbletype {

template <typename Harness>
class PowerSourceConformance : public testing::Test {
 protected:
  PowerSource& power() { return harness_.power(); }
  void setBattery(bool on) {
    harness_.setBattery(on);
    ASSERT_TRUE(harness_.runUntil([&] { return power().onBattery() == on; })) << "the change was never seen";
  }

  Harness harness_;
};

TYPED_TEST_SUITE_P(PowerSourceConformance);

TYPED_TEST_P(PowerSourceConformance, TellsOfEachChangeToItsOneListener) {
  int first = 0;
  std::optional<bool> told;
  this->power().onChange([&] { ++first; });
  this->power().onChange([&] { told = this->power().onBattery(); });
  for (const bool battery : {true, false}) {
    this->setBattery(battery);
    EXPECT_TRUE(this->harness_.runUntil([&] { return told == battery; })) << "word of the change never came";
  }
  EXPECT_EQ(first, 0);
}

TYPED_TEST_P(PowerSourceConformance, TellsNobodyOnceTheListenerHasGone) {
  int told = 0;
  this->power().onChange([&] { ++told; });
  this->power().onChange({});
  this->setBattery(true);
  EXPECT_EQ(told, 0);
}

REGISTER_TYPED_TEST_SUITE_P(PowerSourceConformance, TellsOfEachChangeToItsOneListener,
                            TellsNobodyOnceTheListenerHasGone);

}  // namespace nimbletype
