#include "input/attach_retry.h"

#include <array>

namespace nimbletype {
namespace {

using std::chrono_literals::operator""ms;
constexpr std::array<Milliseconds, 6> waits{300ms, 700ms, 1500ms, 3000ms, 5000ms, 8000ms};

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
