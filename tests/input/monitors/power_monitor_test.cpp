#include "input/monitors/power_monitor.h"

#include <gtest/gtest.h>

#include "platform/scripted/system/scripted_power_source.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

TEST(PowerMonitor, TellsOnlyOfRealChangesHoweverItLearnsOfThem) {
  VirtualMainLoop loop;
  ScriptedPowerSource source;
  source.battery = true;
  const PowerMonitor monitor(source, loop);
  EXPECT_TRUE(monitor.onBattery());
  int told = 0;
  Task observation = monitor.observe([&] { ++told; });

  source.setBattery(true);
  loop.advance(3 * PowerMonitor::pollInterval);
  EXPECT_EQ(told, 0);
  source.setBattery(false);
  EXPECT_EQ(told, 1);
  source.battery = true;
  EXPECT_FALSE(monitor.onBattery());
  loop.advance(PowerMonitor::pollInterval);
  EXPECT_TRUE(monitor.onBattery());
  EXPECT_EQ(told, 2);
  observation.cancel();
  source.setBattery(false);
  EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace nimbletype
