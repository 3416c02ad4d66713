#include "platform/system/observers.h"

#include <vector>

namespace nimbletype {

Task Observers::add(Callback changed) const {
  const auto id = list_->nextID++;
  list_->callbacks.emplace(id, std::make_shared<const Callback>(std::move(changed)));
  return Task([list = std::weak_ptr(list_), id] {
    if (const auto alive = list.lock()) alive->callbacks.erase(id);
  });
}

void Observers::notify() const {
  const auto list = list_;
  const auto round = ++list->round;
  const auto toTell = list->callbacks;
  for (const auto& [id, callback] : toTell) {
    if (list->callbacks.contains(id)) (*callback)();
    if (list->round != round) return;
  }
}

}  // namespace nimbletype
