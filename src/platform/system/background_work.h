#pragma once
#include <atomic>
#include <functional>

#include "platform/system/task.h"

namespace nimbletype {

// Long work that nobody waits for, such as hashing a model, on a thread of low priority.
class BackgroundWork {
 public:
  virtual ~BackgroundWork() = default;
  // `work` runs on the other thread and owns what it uses; `done` follows on the main thread. Destroying the
  // task turns `cancelled` true, waits for `work` to return and leaves `done` uncalled.
  [[nodiscard]] virtual Task run(std::function<void(const std::atomic<bool>& cancelled)> work,
                                 std::function<void()> done) = 0;
};

}  // namespace nimbletype
