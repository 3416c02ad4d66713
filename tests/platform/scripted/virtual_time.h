#pragma once
#include <functional>
#include <stdexcept>
#include <string>

#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {

// A virtual loop that a test can wait on. In small steps, because what is waited for may be over soon; in
// many, because other threads post in real time.
struct VirtualTime {
  void waitFor(const std::string& what, const std::function<bool()>& condition) {
    for (int turn = 0; turn < 10'000'000; ++turn, loop.advance(Milliseconds(1)))
      if (condition()) return;
    throw std::runtime_error("waited for " + what);
  }
  VirtualMainLoop loop;
};

}  // namespace nimbletype
