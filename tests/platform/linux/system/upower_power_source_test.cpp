#include "platform/linux/system/upower_power_source.h"

#include <cstdlib>
#include <optional>

#include "input/monitors/power_monitor.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tests/platform/system/power_source_conformance.h"
#include "tools/stage/private_bus.h"

namespace nimbletype {
namespace {

constexpr const char* service = "org.freedesktop.UPower";

// A UPower that tells what the test wants, on a system bus of its own.
class MockUPower {
 public:
  explicit MockUPower(const std::string& properties = "{\"OnBattery\": false}") {
    PrivateBus::start();
    setenv("DBUS_SYSTEM_BUS_ADDRESS", getenv("DBUS_SESSION_BUS_ADDRESS"), 1);
    bus_.reset(g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
    start(properties);
  }
  ~MockUPower() { stop(); }

  void start(const std::string& properties) {
    // The mock is a package of the system's own Python.
    program_.emplace(std::vector<std::string>{"/usr/bin/python3", "-m", "dbusmock", "--system", "--template",
                                              "upower", "--parameters", properties});
    waitFor("the mock of UPower", [] { return PrivateBus::hasOwner(service); });
  }
  void stop() {
    program_.reset();
    comesTrue([] { return !PrivateBus::hasOwner(service); });
  }
  void setBattery(bool on) {
    const VariantPtr reply(g_dbus_connection_call_sync(
        bus_.get(), service, "/org/freedesktop/UPower", "org.freedesktop.DBus.Properties", "Set",
        g_variant_new("(ssv)", service, "OnBattery", g_variant_new_boolean(on)), nullptr,
        G_DBUS_CALL_FLAGS_NONE, 10'000, nullptr, nullptr));
    EXPECT_TRUE(reply) << "the mock did not take the new state";
  }

 private:
  GObjectPtr<GDBusConnection> bus_;
  std::optional<DesktopProgram> program_;
};

struct UPowerHarness : RealTime {
  UPowerHarness() {
    waitFor("UPower", [&] { return source.isReachable(); });
  }
  PowerSource& power() { return source; }
  void setBattery(bool on) { upower.setBattery(on); }

  MockUPower upower;
  UPowerPowerSource source;
};

INSTANTIATE_TYPED_TEST_SUITE_P(UPower, PowerSourceConformance, UPowerHarness);

// The monitor's own timer stands still here: what it learns comes from UPower.
TEST(UPowerPowerSource, KeepsTheMonitorInformedWhileUPowerComesAndGoes) {
  MockUPower upower("{\"OnBattery\": true}");
  UPowerPowerSource source;
  VirtualMainLoop loop;
  const PowerMonitor monitor(source, loop);
  const auto becomes = [&](bool battery) {
    return comesTrue([&] { return monitor.onBattery() == battery; });
  };
  EXPECT_TRUE(becomes(true)) << "the state at the start was never told";
  upower.setBattery(false);
  EXPECT_TRUE(becomes(false)) << "the plug was put in and nobody said so";
  upower.setBattery(true);
  ASSERT_TRUE(becomes(true)) << "the plug was pulled and nobody said so";
  upower.stop();
  EXPECT_TRUE(becomes(false)) << "without UPower the machine must count as plugged in";
  upower.start("{\"OnBattery\": true}");
  EXPECT_TRUE(becomes(true)) << "UPower came back and was not heard";
}

}  // namespace
}  // namespace nimbletype
