#pragma once
#include <utility>

#include "platform/system/observers.h"

namespace nimbletype {

// A value whose real changes several may follow. Only its owner sets it. Main thread only.
template <typename T>
class Observable {
 public:
  const T& get() const { return value_; }
  // True when it is another value now; setting an equal one tells nobody.
  bool set(T value) {
    if (value_ == value) return false;
    value_ = std::move(value);
    observers_.notify();
    return true;
  }
  // Told after every change until the task is destroyed.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

 private:
  T value_{};
  Observers observers_;
};

}  // namespace nimbletype
