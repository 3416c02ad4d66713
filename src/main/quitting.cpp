#include "main/quitting.h"

#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace nimbletype {
namespace {

using Clock = std::chrono::steady_clock;

constexpr Milliseconds patience{600}, longestEnd{300};

// A turn of the loop that ends though nothing happens.
void serveLoop() {
  QTimer::singleShot(20, [] {});
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void endAfter(Milliseconds time, int status) {
  std::thread([time, status] {
    std::this_thread::sleep_for(time);
    std::_Exit(status);
  }).detach();
}

}  // namespace

void quit(AppModel& model, int status) {
  model.stop();
  const auto end = Clock::now() + patience;
  while (model.memory().isBusy() && Clock::now() < end) serveLoop();
  endAfter(longestEnd, status);
}

}  // namespace nimbletype
