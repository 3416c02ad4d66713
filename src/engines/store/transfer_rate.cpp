#include "engines/store/transfer_rate.h"

#include <algorithm>
#include <cmath>

namespace nimbletype {

void TransferRate::note(MonotonicTime now, std::int64_t bytes) {
  if (!samples_.empty() && bytes < samples_.back().bytes) samples_.clear();
  samples_.push_back({now, bytes});
  while (samples_.size() > 1 && samples_[1].time <= now - window) samples_.pop_front();
}

std::optional<double> TransferRate::speed(MonotonicTime now) const {
  if (samples_.empty()) return std::nullopt;
  const auto isBefore = [start = now - window](const Sample& sample) { return sample.time <= start; };
  const auto within = std::ranges::find_if_not(samples_, isBefore);
  const Sample& base = within == samples_.begin() ? *within : *std::prev(within);
  const auto since = std::max(base.time, now - window);
  const std::chrono::duration<double> span = now - since;
  if (span.count() < 1) return std::nullopt;
  return static_cast<double>(samples_.back().bytes - base.bytes) / span.count();
}

std::optional<std::chrono::seconds> TransferRate::remaining(MonotonicTime now, std::int64_t expected) const {
  const auto bytesASecond = speed(now);
  if (!bytesASecond || *bytesASecond <= 0) return std::nullopt;
  const auto missing = static_cast<double>(std::max<std::int64_t>(expected - samples_.back().bytes, 0));
  return std::chrono::seconds(std::llround(std::ceil(missing / *bytesASecond)));
}

}  // namespace nimbletype
