#pragma once
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/system/main_loop.h"

namespace nimbletype {

// A main loop in which nothing happens by itself: posted jobs and virtual time run when told to. The wall
// clock moves along with virtual time.
class VirtualMainLoop : public MainLoop {
 public:
  void post(std::function<void()> job) override;
  [[nodiscard]] Task after(Milliseconds delay, std::function<void()> job) override;
  MonotonicTime now() const override { return MonotonicTime(elapsed_); }
  WallTime wallNow() const override { return wallStart_ + elapsed_; }

  // Runs what was posted, what those jobs post included, until nothing is left.
  void runPosted();
  // Lets time pass, running everything that falls due in order; among equals what was scheduled first. Posted
  // jobs run before time moves on.
  void advance(Milliseconds span);
  // Whether anything is posted or waits for its time.
  bool isIdle() const;
  // Since the loop was made.
  Milliseconds elapsed() const { return elapsed_; }
  void setWallNow(WallTime now) { wallStart_ = now - elapsed_; }

 private:
  using Due = std::pair<Milliseconds, std::uint64_t>;  // when, and which was scheduled first
  using Timers = std::map<Due, std::function<void()>>;

  std::function<void()> takePosted();

  mutable std::mutex mutex_;  // guards posted_ alone: other threads may post
  std::deque<std::function<void()>> posted_;
  std::shared_ptr<Timers> timers_ = std::make_shared<Timers>();  // tasks may outlive the loop
  std::uint64_t scheduled_ = 0;
  Milliseconds elapsed_{0};
  // 2025-03-07T09:00:00Z
  WallTime wallStart_ = std::chrono::sys_days{std::chrono::March / 7 / 2025} + std::chrono::hours(9);
};

}  // namespace nimbletype
