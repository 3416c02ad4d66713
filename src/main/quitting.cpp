#include "main/quitting.h"

#include <chrono>

namespace nimbletype {
namespace {

constexpr Milliseconds patience{700};

}  // namespace

void quit(AppModel& model, const std::function<void()>& serve) {
  model.stop();
  const auto end = std::chrono::steady_clock::now() + patience;
  while (model.memory().isBusy() && std::chrono::steady_clock::now() < end) serve();
}

}  // namespace nimbletype
