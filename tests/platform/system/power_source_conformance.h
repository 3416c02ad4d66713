#pragma once
#include <gtest/gtest.h>

#include <optional>

#include "platform/system/power_source.h"

// What every `PowerSource` that hears of changes must do. Instantiate with a default-constructible harness
// that has
//   PowerSource& power();                                  // plugged in at first
//   void setBattery(bool on);
//   void waitFor(std::string what, std::function<bool()> condition);
namespace nimbletype {

template <typename Harness>
struct PowerSourceConformance : testing::Test, Harness {};
TYPED_TEST_SUITE_P(PowerSourceConformance);

TYPED_TEST_P(PowerSourceConformance, TellsOfEachChangeToItsOneListener) {
  int first = 0;
  std::optional<bool> told;
  this->power().onChange([&] { ++first; });
  this->power().onChange([&] { told = this->power().onBattery(); });
  for (const bool battery : {true, false}) {
    this->setBattery(battery);
    this->waitFor("word of the change", [&] { return told == battery; });
  }
  this->power().onChange({});
  this->setBattery(true);
  this->waitFor("the last change", [&] { return this->power().onBattery(); });
  EXPECT_EQ(told, false) << "the listener had gone";
  EXPECT_EQ(first, 0);
}

REGISTER_TYPED_TEST_SUITE_P(PowerSourceConformance, TellsOfEachChangeToItsOneListener);

}  // namespace nimbletype
