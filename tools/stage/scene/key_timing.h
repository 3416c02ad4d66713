#pragma once
#include <array>
#include <optional>
#include <span>
#include <vector>

#include "tools/stage/scene/trace_log.h"

namespace nimbletype {

// What one key press brought about until the next one, in milliseconds since the step before.
struct KeyTiming {
  enum Step { fieldChange, request, firstText, shown, onScreen, stepCount };
  std::array<std::optional<double>, stepCount> steps;
  std::optional<double> total;  // key press to ghost on screen
  // The ghost was there before and shrank: nothing was asked of the model.
  bool typedOver = false;
  // Field change to the end of a ghost that the key did not fit.
  std::optional<double> gone;
};

// Sorts trace lines, and pictures and endings of the ghost to the key presses; all in order of time.
std::vector<KeyTiming> splitByKey(std::span<const Clock::time_point> presses,
                                  std::span<const TraceEntry> trace,
                                  std::span<const Clock::time_point> pictures,
                                  std::span<const Clock::time_point> endings = {});

struct Spread {
  std::size_t count = 0;
  double median = 0, p90 = 0;
};
Spread spreadOf(std::vector<double> values);

}  // namespace nimbletype
