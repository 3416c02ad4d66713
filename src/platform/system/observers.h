#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "platform/system/task.h"

namespace nimbletype {

// Those who want to hear of one thing's changes. Observers may come, go and change the thing again while they
// are being told; a change made meanwhile is told to everybody in place of what was still to be told.
class Observers {
 public:
  using Callback = std::function<void()>;

  // The observer is told until the task is destroyed.
  [[nodiscard]] Task add(Callback changed) const;
  void notify() const;

 private:
  struct List {
    std::map<std::uint64_t, std::shared_ptr<const Callback>> callbacks;
    std::uint64_t nextID = 0;
    std::uint64_t round = 0;
  };
  std::shared_ptr<List> list_ = std::make_shared<List>();  // tasks may outlive the thing observed
};

}  // namespace nimbletype
