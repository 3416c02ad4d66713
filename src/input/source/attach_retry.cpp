#include "input/source/attach_retry.h"

#include <array>

namespace nimbletype {
namespace {

constexpr std::array waits{Milliseconds(300),  Milliseconds(700),  Milliseconds(1500),
                           Milliseconds(3000), Milliseconds(5000), Milliseconds(8000)};

}  // namespace

void AttachRetry::start(Attempt attempt, std::function<void(Milliseconds)> succeeded) {
  attempt_ = std::move(attempt);
  succeeded_ = std::move(succeeded);
  running_ = true;
  wait(0);
}

void AttachRetry::cancel() {
  running_ = false;
  next_.cancel();
}

void AttachRetry::wait(std::size_t index) {
  if (index == waits.size()) {
    running_ = false;
    return;
  }
  next_ = loop_.after(waits[index], [this, index] {
    const bool done = attempt_();
    if (!running_) return;  // cancelled by the attempt
    if (!done) return wait(index + 1);
    running_ = false;
    succeeded_(waits[index]);
  });
}

}  // namespace nimbletype
