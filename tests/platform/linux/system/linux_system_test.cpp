#include "platform/linux/system/linux_background_work.h"

#include <sys/resource.h>
#include <unistd.h>

#include "platform/linux/storage/linux_disk_space.h"
#include "platform/linux/system/linux_permission_source.h"
#include "platform/scripted/accessibility/scripted_accessibility.h"
#include "tests/platform/system/background_work_conformance.h"
#include "tests/platform/system/permission_source_conformance.h"
#include "tools/stage/temporary_folder.h"
#include "tools/stage/waiting_main_loop.h"

namespace nimbletype {
namespace {

struct LinuxBackgroundWorkHarness {
  BackgroundWork& work() { return background; }
  void waitFor(const std::string&, const std::function<bool()>& done) { loop.runUntil(done); }
  WaitingMainLoop loop;
  LinuxBackgroundWork background{loop};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, BackgroundWorkConformance, LinuxBackgroundWorkHarness);

int niceness() {
  return getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
}

TEST(LinuxBackgroundWork, YieldsWithoutSlowingTheMainThread) {
  LinuxBackgroundWorkHarness harness;
  const int before = niceness();
  const auto worker = std::make_shared<int>(before);
  bool done = false;
  const Task task = harness.work().run([worker](const auto&) { *worker = niceness(); }, [&] { done = true; });
  harness.loop.runUntil([&] { return done; });
  EXPECT_GT(*worker, before);
  EXPECT_EQ(niceness(), before);
}

TEST(LinuxDiskSpace, TellsTheVolumeOfAFolderThatIsNotThereYet) {
  const TemporaryFolder folder;
  const LinuxDiskSpace space;
  EXPECT_EQ(nearestExisting(folder.path / "a" / "b"), folder.path);
  EXPECT_GT(space.available(folder.path / "a" / "b"), 0);
  EXPECT_EQ(nearestExisting("/"), "/");
}

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
