#pragma once
#include <memory>
#include <utility>

#include "platform/system/task.h"

namespace nimbletype {

// Deferred jobs, each started when the one before it has answered, under one task. Copies are the same
// sequence, so that the handler of one step can start the next.
class TaskSequence {
 public:
  void run(Task step) { *current_ = std::move(step); }
  // Cancels the step that is running. A sequence lives as long as this.
  [[nodiscard]] Task task() const {
    return Task([current = current_] { current->cancel(); });
  }

 private:
  std::shared_ptr<Task> current_ = std::make_shared<Task>();
};

}  // namespace nimbletype
