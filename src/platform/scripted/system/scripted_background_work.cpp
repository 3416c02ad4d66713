#include "platform/scripted/system/scripted_background_work.h"

#include <utility>

namespace nimbletype {

Task ScriptedBackgroundWork::run(std::function<void(const std::atomic<bool>&)> work,
                                 std::function<void()> done) {
  jobs_->push_back(std::make_shared<Job>(std::move(work), std::move(done)));
  runNextLater();
  return Task([jobs = std::weak_ptr(jobs_), job = std::weak_ptr(jobs_->back())] {
    const auto list = jobs.lock();
    if (const auto alive = job.lock(); list && alive) list->remove(alive);
  });
}

void ScriptedBackgroundWork::release() {
  held_ = false;
  runNextLater();
}

void ScriptedBackgroundWork::runNextLater() {
  if (held_ || jobs_->empty()) return;
  turn_ = loop_.after(Milliseconds(0), [this] {
    if (held_ || jobs_->empty()) return;
    const auto job = jobs_->front();
    jobs_->pop_front();
    runNextLater();
    const std::atomic<bool> cancelled = false;
    job->work(cancelled);
    job->done();
  });
}

}  // namespace nimbletype
