#include "platform/linux/system/linux_permission_source.h"

#include "platform/scripted/accessibility/scripted_accessibility.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "tests/platform/system/permission_source_conformance.h"

namespace nimbletype {
namespace {

struct LinuxPermissionSourceHarness {
  PermissionSource& permissions() { return source; }
  VirtualMainLoop loop;
  ScriptedAccessibility accessibility{loop};
  LinuxPermissionSource source{accessibility};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, PermissionSourceConformance, LinuxPermissionSourceHarness);

TEST(LinuxPermissionSource, AccessIsThereWhenTheAccessibilityBusIs) {
  LinuxPermissionSourceHarness harness;
  for (const bool open : {false, true}) {
    harness.accessibility.trusted = open;
    EXPECT_EQ(harness.source.isTrusted(), open);
  }
}

}  // namespace
}  // namespace nimbletype
