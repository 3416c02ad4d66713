#include <memory>

#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/system/main_loop_conformance.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

struct QtMainLoopHarness : RealTime {
  MainLoop& mainLoop() { return loop; }
  QtMainLoop loop;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, MainLoopConformance, QtMainLoopHarness);

TEST(QtMainLoop, TasksAndPostsMayOutliveTheLoop) {
  auto loop = std::make_unique<QtMainLoop>();
  bool ran = false, later = false;
  Task task = loop->after(Milliseconds(0), [&] { ran = true; });
  loop->post([&] { ran = true; });
  loop.reset();
  QtMainLoop other;
  other.post([&] { later = true; });
  waitFor("the other loop's job", [&] { return later; });
  task.cancel();
  EXPECT_FALSE(ran);
}

}  // namespace
}  // namespace nimbletype
