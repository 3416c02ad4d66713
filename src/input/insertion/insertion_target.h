#pragma once
#include <functional>

#include "platform/accessibility/accessibility.h"

namespace nimbletype {

// Where a text is to go.
struct InsertionTarget {
  ObjectRef element{};  // none when the application tells of none
  bool inTerminal = false;
  // Asked right before something is inserted that had to wait, and says in the log why not; without it the
  // target is taken to be still there.
  std::function<bool()> hasFocus{};

  bool isStillThere() const { return !hasFocus || hasFocus(); }
};

}  // namespace nimbletype
