#include "platform/linux/system/linux_system_settings.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/platform/system/system_settings_conformance.h"
#include "tools/stage/private_bus.h"

namespace nimbletype {
namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";

// A portal that tells what the test wants.
class MockPortal {
 public:
  explicit MockPortal(const char* settings) {
    mock_ = std::make_unique<DesktopProgram>(
        std::vector<std::string>{"/usr/bin/python3", "-m", "dbusmock", "--session", portal, path, interface});
    waitFor("the mock of the portal", [] { return PrivateBus::hasOwner(portal); });
    call("AddMethod", g_variant_new("(sssss)", interface, "ReadAll", "as", "a{sa{sv}}", settings));
  }
  ~MockPortal() {
    mock_.reset();
    comesTrue([] { return !PrivateBus::hasOwner(portal); });
  }
  void change(const char* space, const char* key, GVariant* value) {
    call("EmitSignal", g_variant_new_parsed("(%s, 'SettingChanged', 'ssv', [<%s>, <%s>, <%*>])", interface,
                                            space, key, value));
  }

 private:
  void call(const char* method, GVariant* arguments) {
    const GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    const VariantPtr reply(g_dbus_connection_call_sync(bus.get(), portal, path, "org.freedesktop.DBus.Mock",
                                                       method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE,
                                                       10'000, nullptr, nullptr));
    ASSERT_TRUE(reply) << "the mock did not take " << method;
  }
  std::unique_ptr<DesktopProgram> mock_;
};

TEST(LinuxSystemSettings, FollowTheDesktop) {
  setenv("GSETTINGS_BACKEND", "memory", 1);
  ASSERT_TRUE(PrivateBus::start());
  std::optional<MockPortal> mock(std::in_place,
                                 "ret = {'org.freedesktop.appearance': {'color-scheme': dbus.UInt32(1)}}");
  LinuxSystemSettings settings;
  int told = 0;
  settings.onChange([&] { ++told; });
  const auto become = [&](const char* what, std::optional<bool> dark, bool still) {
    waitFor(what,
            [&] { return settings.prefersDark() == dark && settings.reducesMotion() == still && told > 0; });
    told = 0;
  };
  become("the portal's dark", true, false);
  mock->change("org.freedesktop.appearance", "color-scheme", g_variant_new_uint32(2));
  become("light", false, false);
  mock->change("org.gnome.desktop.interface", "enable-animations", g_variant_new_boolean(FALSE));
  become("rest", false, true);
  mock->change("org.gnome.desktop.interface", "gtk-theme", g_variant_new_string("Some-Dark"));
  mock->change("org.freedesktop.appearance", "color-scheme", g_variant_new_uint32(0));
  become("the theme's dark", true, true);
  mock.reset();
  become("a desktop without portal", std::nullopt, false);
  const GObjectPtr<GSettings> gnome(g_settings_new("org.gnome.desktop.interface"));
  g_settings_set_string(gnome.get(), "color-scheme", "prefer-dark");
  become("GNOME's dark", true, false);
  g_settings_set_boolean(gnome.get(), "enable-animations", FALSE);
  become("GNOME's rest", true, true);
}

struct LinuxSettingsHarness {
  SystemSettings& settings() { return own; }
  bool hasBus = PrivateBus::start();
  LinuxSystemSettings own;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, SystemSettingsConformance, LinuxSettingsHarness);

TEST(DesktopChoices, SayNothingUnasked) {
  DesktopChoices choices;
  EXPECT_EQ(choices.prefersDark(), std::nullopt);
  EXPECT_FALSE(choices.reducesMotion());
  choices.take("org.freedesktop.appearance", "color-scheme", VariantPtr(g_variant_new_string("dark")).get());
  choices.take("org.example", "gtk-theme", VariantPtr(g_variant_new_string("A-dark")).get());
  EXPECT_EQ(choices, DesktopChoices{});
  choices.take("org.freedesktop.appearance", "reduced-motion", VariantPtr(g_variant_new_uint32(1)).get());
  EXPECT_TRUE(choices.reducesMotion());
}

}  // namespace
}  // namespace nimbletype
