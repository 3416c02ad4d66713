#include "platform/scripted/system/virtual_main_loop.h"

#include <algorithm>

namespace nimbletype {

void VirtualMainLoop::post(std::function<void()> job) {
  const std::lock_guard lock(mutex_);
  posted_.push_back(std::move(job));
}

Task VirtualMainLoop::after(Milliseconds delay, std::function<void()> job) {
  const Due due{elapsed_ + std::max(delay, Milliseconds(0)), scheduled_++};
  timers_->emplace(due, std::move(job));
  return Task([timers = std::weak_ptr(timers_), due] {
    if (const auto alive = timers.lock()) {
      // The job dies last: what it owns may cancel other tasks.
      const auto node = alive->extract(due);
    }
  });
}

std::function<void()> VirtualMainLoop::takePosted() {
  const std::lock_guard lock(mutex_);
  if (posted_.empty()) return nullptr;
  auto job = std::move(posted_.front());
  posted_.pop_front();
  return job;
}

void VirtualMainLoop::runPosted() {
  while (const auto job = takePosted()) job();
}

void VirtualMainLoop::advance(Milliseconds span) {
  const auto end = elapsed_ + span;
  runPosted();
  while (!timers_->empty() && timers_->begin()->first.first <= end) {
    const auto node = timers_->extract(timers_->begin());
    elapsed_ = std::max(elapsed_, node.key().first);
    node.mapped()();
    runPosted();
  }
  elapsed_ = std::max(elapsed_, end);
}

bool VirtualMainLoop::isIdle() const {
  const std::lock_guard lock(mutex_);
  return posted_.empty() && timers_->empty();
}

}  // namespace nimbletype
