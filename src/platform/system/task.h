#pragma once
#include <functional>
#include <utility>

namespace nimbletype {

// Owner of one deferred or asynchronous job. Destroying or replacing it cancels the job: its callback is
// never called afterwards. Main thread only.
class Task {
 public:
  Task() = default;
  explicit Task(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
  Task(Task&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
  Task& operator=(Task&& other) noexcept {
    if (this != &other) {
      cancel();
      cancel_ = std::exchange(other.cancel_, nullptr);
    }
    return *this;
  }
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;
  ~Task() { cancel(); }

  void cancel() {
    if (auto cancel = std::exchange(cancel_, nullptr)) cancel();
  }

 private:
  std::function<void()> cancel_;
};

}  // namespace nimbletype
