#pragma once
#include <chrono>
#include <functional>

#include "platform/system/task.h"

namespace nimbletype {

using Milliseconds = std::chrono::milliseconds;
using MonotonicTime = std::chrono::steady_clock::time_point;
using WallTime = std::chrono::sys_time<std::chrono::milliseconds>;

// The main thread's loop and its clocks. `post` may be called from any thread; everything else only from the
// main thread.
class MainLoop {
 public:
  virtual ~MainLoop() = default;
  // Runs `job` on the main thread in a later turn, after everything posted before it.
  virtual void post(std::function<void()> job) = 0;
  // Runs `job` once after `delay` unless the task is destroyed first. A zero delay still means a later turn.
  [[nodiscard]] virtual Task after(Milliseconds delay, std::function<void()> job) = 0;
  virtual MonotonicTime now() const = 0;
  virtual WallTime wallNow() const = 0;
};

}  // namespace nimbletype
