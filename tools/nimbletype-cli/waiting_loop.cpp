#include "waiting_loop.h"

#include <memory>

namespace nimbletype::cli {

void WaitingLoop::post(std::function<void()> job) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(job));
  }
  arrived_.notify_one();
}

Task WaitingLoop::after(Milliseconds delay, std::function<void()> job) {
  auto timer = std::make_shared<std::function<void()>>(std::move(job));
  timers_.emplace(now() + delay, timer);
  return Task([timer] { *timer = nullptr; });
}

WallTime WaitingLoop::wallNow() const {
  return std::chrono::time_point_cast<Milliseconds>(std::chrono::system_clock::now());
}

// Waits for a posted job or a timer that falls due.
std::function<void()> WaitingLoop::next() {
  std::unique_lock lock(mutex_);
  const auto arrived = [this] { return !posted_.empty(); };
  if (timers_.empty())
    arrived_.wait(lock, arrived);
  else if (!arrived_.wait_until(lock, timers_.begin()->first, arrived)) {
    const auto timer = timers_.extract(timers_.begin()).mapped();
    return *timer ? std::exchange(*timer, nullptr) : [] {};
  }
  auto job = std::move(posted_.front());
  posted_.pop_front();
  return job;
}

void WaitingLoop::runUntil(const std::function<bool()>& condition) {
  while (!condition()) next()();
}

}  // namespace nimbletype::cli
