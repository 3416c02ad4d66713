#pragma once
#include <cstddef>
#include <functional>

#include "platform/system/main_loop.h"

namespace nimbletype {

// Tries something again after 300, 700, 1500, 3000, 5000 and 8000 ms, each counted from the try before, until
// it succeeds. Restarting begins anew; destroying or cancelling stops.
class AttachRetry {
 public:
  explicit AttachRetry(MainLoop& loop) : loop_(loop) {}

  using Attempt = std::function<bool()>;
  // `succeeded` is told the wait just taken.
  void start(Attempt attempt, std::function<void(Milliseconds)> succeeded);
  void cancel();
  bool isRunning() const { return running_; }

 private:
  void wait(std::size_t index);

  MainLoop& loop_;
  Attempt attempt_;
  std::function<void(Milliseconds)> succeeded_;
  bool running_ = false;
  Task next_;
};

}  // namespace nimbletype
