#include "platform/linux/system/linux_background_work.h"

#include <sys/resource.h>
#include <unistd.h>

#include <memory>
#include <thread>
#include <utility>

namespace nimbletype {
namespace {

constexpr int niceness = 10;

struct Run {
  std::atomic<bool> cancelled = false;
  std::function<void()> done;  // main thread only; none once it is called or cancelled
  std::thread thread;          // main thread only
};

void finish(Run& run) {
  const auto done = std::exchange(run.done, nullptr);
  if (!done) return;
  run.thread.join();
  done();
}

void cancel(Run& run) {
  run.cancelled = true;
  if (run.thread.joinable()) run.thread.join();
  run.done = nullptr;
}

}  // namespace

Task LinuxBackgroundWork::run(std::function<void(const std::atomic<bool>&)> work,
                              std::function<void()> done) {
  const auto run = std::make_shared<Run>();
  run->done = std::move(done);
  run->thread = std::thread([&loop = loop_, run, work = std::move(work)] {
    // Linux knows a niceness for each thread, and this one's stays as it is when it cannot be changed.
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), niceness);
    work(run->cancelled);
    loop.post([run] { finish(*run); });
  });
  return Task([run] { cancel(*run); });
}

}  // namespace nimbletype
