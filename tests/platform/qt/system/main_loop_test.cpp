#include <QCoreApplication>
#include <QDeadlineTimer>
#include <memory>

#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/system/main_loop_conformance.h"

namespace nimbletype {
namespace {

struct QtMainLoopHarness {
  MainLoop& loop() { return loop_; }
  static bool runUntil(const std::function<bool()>& done) {
    const QDeadlineTimer patience(20000);
    while (!done() && !patience.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1000);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return done();
  }
  QtMainLoop loop_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, MainLoopConformance, QtMainLoopHarness);

TEST(QtMainLoop, TasksAndPostsMayOutliveTheLoop) {
  auto loop = std::make_unique<QtMainLoop>();
  bool ran = false;
  Task task = loop->after(Milliseconds(0), [&] { ran = true; });
  loop->post([&] { ran = true; });
  loop.reset();
  QtMainLoop other;
  bool later = false;
  other.post([&] { later = true; });
  EXPECT_TRUE(QtMainLoopHarness::runUntil([&] { return later; }));
  task.cancel();
  EXPECT_FALSE(ran);
}

}  // namespace
}  // namespace nimbletype
