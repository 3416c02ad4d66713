#pragma once
#include "platform/system/main_loop.h"

namespace nimbletype {

// The port over the main dispatch queue, which the application's run loop serves.
class MacMainLoop final : public MainLoop {
 public:
  void post(std::function<void()> job) override;
  [[nodiscard]] Task after(Milliseconds delay, std::function<void()> job) override;
  MonotonicTime now() const override { return std::chrono::steady_clock::now(); }
  WallTime wallNow() const override;
};

}  // namespace nimbletype
