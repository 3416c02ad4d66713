#pragma once
#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>

#include "platform/system/main_loop.h"

namespace nimbletype {

// How fast a transfer was during the last seconds, for those who show its progress. What was there before the
// first note counts for nothing.
class TransferRate {
 public:
  static constexpr std::chrono::seconds window{8};

  // How many bytes there are at this moment. Fewer than before mean that the transfer began anew.
  void note(MonotonicTime now, std::int64_t bytes);
  // Bytes a second, 0 for a transfer that stands still; none before there is a second to judge by.
  std::optional<double> speed(MonotonicTime now) const;
  // Until there are `expected` bytes; none when nothing can be said.
  std::optional<std::chrono::seconds> remaining(MonotonicTime now, std::int64_t expected) const;

 private:
  struct Sample {
    MonotonicTime time;
    std::int64_t bytes = 0;
  };
  // The last before the window, which tells what was there at its start, and all within.
  std::deque<Sample> samples_;
};

}  // namespace nimbletype
