#pragma once
#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>

#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {

// A virtual loop for code with a thread of its own: a test can wait until that thread has posted what it
// waits for. Time passes only when the test says so; a test that waits for nothing hangs and is ended from
// outside.
class WaitingMainLoop : public VirtualMainLoop {
 public:
  void post(std::function<void()> job) override {
    VirtualMainLoop::post(std::move(job));
    const std::lock_guard lock(mutex_);
    ++posts_;
    posted_.notify_all();
  }

  void runUntil(const std::function<bool()>& condition) {
    for (;;) {
      const auto seen = posts();
      runPosted();
      if (condition()) return;
      std::unique_lock lock(mutex_);
      posted_.wait(lock, [&] { return posts_ != seen; });
    }
  }

 private:
  std::uint64_t posts() {
    const std::lock_guard lock(mutex_);
    return posts_;
  }

  std::mutex mutex_;
  std::condition_variable posted_;
  std::uint64_t posts_ = 0;
};

// Where one thread waits until another lets it go on, and can see that it is being waited at.
class Gate {
 public:
  // Called by the thread to hold; passes at once after `open`.
  void pass() {
    std::unique_lock lock(mutex_);
    ++arrivals_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return open_; });
  }
  void awaitArrival() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return arrivals_ > 0; });
  }
  void open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int arrivals_ = 0;
  bool open_ = false;
};

}  // namespace nimbletype
