#include "input/monitors/permissions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/system/scripted_permission_source.h"
#include "platform/scripted/system/scripted_system_settings.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

using testing::IsEmpty;

struct PermissionsTest : testing::Test {
  PermissionsTest() {
    permissions.onAccessibilityGranted([this] { ++granted; });
    observation = permissions.observe([this] { ++told; });
  }
  void expectOpened(const std::string& page) {
    const std::string place = "x-apple.systempreferences:com.apple.preference.security?Privacy_" + page;
    EXPECT_EQ(std::exchange(desktop.opened, {}), std::vector{place});
  }
  VirtualMainLoop loop;
  ScriptedPermissionSource desktop;
  ScriptedSystemSettings settings;
  Permissions permissions{desktop, settings, loop};
  Task observation;
  int granted = 0, told = 0;
};

TEST_F(PermissionsTest, SeesAccessComeAndGo) {
  loop.advance(Permissions::grantedInterval);
  EXPECT_EQ(told, 0);
  desktop.trusted = true;
  loop.advance(Permissions::awaitingInterval);
  EXPECT_TRUE(permissions.accessibility());
  EXPECT_EQ(permissions.accessibilityGrantedAt(), loop.wallNow());
  EXPECT_EQ(granted, 1);
  desktop.trusted = false;
  loop.advance(Permissions::grantedInterval);
  EXPECT_FALSE(permissions.accessibility());
  EXPECT_EQ(permissions.accessibilityGrantedAt(), std::nullopt);
  desktop.trusted = true;
  desktop.tell();
  EXPECT_EQ(granted, 2);
  EXPECT_EQ(told, 3);
  // The word of the desktop may come while its answer is still the old one.
  desktop.tell();
  desktop.trusted = false;
  loop.advance(Permissions::awaitingInterval);
  EXPECT_FALSE(permissions.accessibility());
}

TEST_F(PermissionsTest, AsksAndShowsWhereToAllowIt) {
  permissions.askForAccessibility();
  EXPECT_EQ(desktop.asked, 1);
  EXPECT_EQ(permissions.accessibilityRequestedAt(), loop.wallNow());
  expectOpened("Accessibility");
  desktop.trusted = true;
  permissions.askForAccessibility();
  EXPECT_THAT(desktop.opened, IsEmpty());
  EXPECT_EQ(granted, 1);
  EXPECT_EQ(told, 2);

  permissions.askForScreenRecording();
  EXPECT_FALSE(permissions.screenRecording());
  expectOpened("ScreenCapture");
  desktop.grantsRecording = true;
  permissions.askForScreenRecording();
  permissions.askForScreenRecording();
  EXPECT_TRUE(permissions.screenRecording());
  EXPECT_THAT(desktop.opened, IsEmpty());
  EXPECT_EQ(told, 3);
}

TEST_F(PermissionsTest, ARequestThatBringsNothingLooksStuckUntilTheNext) {
  loop.advance(2 * Permissions::stuckAfter);
  EXPECT_FALSE(permissions.accessibilityLooksStuck()) << "nobody has asked yet";
  for (int i = 0; i < 2; ++i) {
    permissions.askForAccessibility();
    loop.advance(Permissions::stuckAfter - Milliseconds(1));
    EXPECT_FALSE(permissions.accessibilityLooksStuck());
    loop.advance(Permissions::awaitingInterval);
    EXPECT_TRUE(permissions.accessibilityLooksStuck());
  }
  desktop.trusted = true;
  desktop.tell();
  EXPECT_FALSE(permissions.accessibilityLooksStuck());
}

TEST_F(PermissionsTest, CelebratesEachGrantOnce) {
  EXPECT_TRUE(permissions.celebrate("accessibility"));
  EXPECT_FALSE(permissions.celebrate("accessibility"));
  EXPECT_TRUE(permissions.celebrate("screen recording"));
}

}  // namespace
}  // namespace nimbletype
