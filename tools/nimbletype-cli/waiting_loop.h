#pragma once
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

#include "platform/main_loop.h"

namespace nimbletype::cli {

// A main loop for a program that waits for one thing and ends: no desktop, no event library.
class WaitingLoop : public MainLoop {
 public:
  void post(std::function<void()> job) override;
  [[nodiscard]] Task after(Milliseconds delay, std::function<void()> job) override;
  MonotonicTime now() const override { return std::chrono::steady_clock::now(); }
  WallTime wallNow() const override;
  // Runs jobs until the condition holds.
  void runUntil(const std::function<bool()>& condition);

 private:
  std::function<void()> next();

  std::mutex mutex_;  // guards posted_: other threads post
  std::condition_variable arrived_;
  std::deque<std::function<void()>> posted_;
  using Timers = std::multimap<MonotonicTime, std::shared_ptr<std::function<void()>>>;
  Timers timers_;
};

}  // namespace nimbletype::cli
