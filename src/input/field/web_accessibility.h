#pragma once
#include <cstdint>
#include <set>

#include "input/field/ax_element.h"
#include "platform/desktop/workspace.h"

namespace nimbletype {

// Browsers and applications built like them make the content of their pages accessible only when asked to.
class WebAccessibility {
 public:
  // Asks an application of that kind, once per process.
  void enable(const RunningApp& app, Accessibility& accessibility, const ObjectRef& element);

 private:
  std::set<std::int64_t> enabled_;  // processes
};

}  // namespace nimbletype
