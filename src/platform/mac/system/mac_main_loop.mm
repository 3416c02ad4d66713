#include "platform/mac/system/mac_main_loop.h"

#import <dispatch/dispatch.h>

#include <algorithm>
#include <memory>

namespace nimbletype {

void MacMainLoop::post(std::function<void()> job) {
  const auto shared = std::make_shared<std::function<void()>>(std::move(job));
  dispatch_async(dispatch_get_main_queue(), ^{
    (*shared)();
  });
}

// The block outlives a cancelled task, but what the job holds is let go of at once.
Task MacMainLoop::after(Milliseconds delay, std::function<void()> job) {
  const auto pending = std::make_shared<std::function<void()>>(std::move(job));
  const std::int64_t wait =
      std::max<std::int64_t>(delay.count(), 0) * static_cast<std::int64_t>(NSEC_PER_MSEC);
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, wait), dispatch_get_main_queue(), ^{
    if (auto due = std::exchange(*pending, nullptr)) due();
  });
  return Task([pending] { *pending = nullptr; });
}

WallTime MacMainLoop::wallNow() const {
  return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

}  // namespace nimbletype
