#pragma once
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace nimbletype {

// Numbers the work of the model's thread. A job notes the number when it begins and stops as soon as another
// one stands there: the next job's, or one set to stop it.
class GenerationCounter {
 public:
  std::int64_t value() const { return value_.load(); }
  std::int64_t increment() {
    auto seen = value_.load();
    while (!value_.compare_exchange_weak(seen, seen + 1)) {
    }
    return seen + 1;
  }
  // Moves on only when `seen` still stands there, so that a late cancellation never stops another job.
  void incrementIf(std::int64_t seen) { value_.compare_exchange_strong(seen, seen + 1); }

 private:
  std::atomic<std::int64_t> value_{0};
};

// Places in a job where a test may stop the model's thread to act at a known moment. Called on that thread.
struct RuntimeHooks {
  std::function<void(std::size_t evaluatedTokens)> beforeChunk;
  std::function<void()> insideEvaluation;
  std::function<void(int generatedTokens)> beforeToken;
};

// What the running job looks at to learn that nobody waits for it any more.
struct JobWatch {
  const GenerationCounter* counter = nullptr;
  std::int64_t started = 0;
  const RuntimeHooks* hooks = nullptr;

  bool isStale() const { return counter && counter->value() != started; }
};

}  // namespace nimbletype
