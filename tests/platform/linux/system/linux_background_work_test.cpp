#include "platform/linux/system/linux_background_work.h"

#include <sys/resource.h>
#include <unistd.h>

#include "platform/linux/storage/linux_disk_space.h"
#include "tests/platform/storage/temporary_folder.h"
#include "tests/platform/system/background_work_conformance.h"
#include "tools/stage/waiting_main_loop.h"

namespace nimbletype {
namespace {

struct LinuxBackgroundWorkHarness {
  BackgroundWork& work() { return background; }
  bool runUntil(const std::function<bool()>& done) {
    loop.runUntil(done);
    return true;
  }
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
  harness.runUntil([&] { return done; });
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

}  // namespace
}  // namespace nimbletype
