#pragma once
#include "platform/system/main_loop.h"

namespace nimbletype {

// How long to wait for the next look at something that may change without a word. Looks of one interval fall
// on the same moments whoever looks, so that together they wake the machine once.
inline Milliseconds untilBeat(const MainLoop& loop, Milliseconds interval) {
  const auto sinceStart = std::chrono::duration_cast<Milliseconds>(loop.now().time_since_epoch());
  return interval - sinceStart % interval;
}

}  // namespace nimbletype
