#include "tools/stage/scene/key_timing.h"

#include <algorithm>
#include <cmath>

namespace nimbletype {
namespace {

// The last time each step was reached within a stretch of the trace: a request may be made twice, and the one
// that counts is that which led to the ghost.
struct Reached {
  std::array<std::optional<Clock::time_point>, KeyTiming::stepCount> at;

  void note(const TraceEntry& entry) {
    if (entry.stage == "fieldChanged" && !at[KeyTiming::fieldChange]) at[KeyTiming::fieldChange] = entry.at;
    // What comes before belongs to the key before.
    if (!at[KeyTiming::fieldChange] || at[KeyTiming::shown]) return;
    if (entry.stage == "requested") at[KeyTiming::request] = entry.at;
    if (entry.stage == "firstText" && at[KeyTiming::request]) at[KeyTiming::firstText] = entry.at;
    if (entry.stage == "shown") at[KeyTiming::shown] = entry.at;
  }
};

KeyTiming timingOf(Clock::time_point press, const Reached& reached) {
  KeyTiming timing;
  Clock::time_point last = press;
  for (int step = 0; step < KeyTiming::stepCount; ++step) {
    const auto& at = reached.at[static_cast<std::size_t>(step)];
    if (!at) continue;
    timing.steps[static_cast<std::size_t>(step)] = millisecondsBetween(last, *at);
    last = *at;
  }
  if (reached.at[KeyTiming::onScreen]) timing.total = millisecondsBetween(press, last);
  timing.typedOver = reached.at[KeyTiming::shown] && !reached.at[KeyTiming::request];
  return timing;
}

}  // namespace

std::vector<KeyTiming> splitByKey(std::span<const Clock::time_point> presses,
                                  std::span<const TraceEntry> trace,
                                  std::span<const Clock::time_point> pictures,
                                  std::span<const Clock::time_point> endings) {
  std::vector<KeyTiming> timings;
  for (std::size_t i = 0; i < presses.size(); ++i) {
    const auto end = i + 1 < presses.size() ? presses[i + 1] : Clock::time_point::max();
    const auto isOurs = [&](Clock::time_point at) { return at >= presses[i] && at < end; };
    Reached reached;
    for (const TraceEntry& entry : trace)
      if (isOurs(entry.at)) reached.note(entry);
    // The picture belongs to the text on show only from then on; painting may be done before the trace says
    // so.
    const auto shown = reached.at[KeyTiming::shown];
    const auto from =
        reached.at[KeyTiming::firstText].value_or(reached.at[KeyTiming::fieldChange].value_or(presses[i]));
    for (const auto picture : pictures)
      if (shown && !reached.at[KeyTiming::onScreen] && isOurs(picture) && picture >= from)
        reached.at[KeyTiming::onScreen] = std::max(picture, *shown);
    timings.push_back(timingOf(presses[i], reached));
    const auto changed = reached.at[KeyTiming::fieldChange];
    for (const auto ending : endings)
      if (changed && !timings.back().gone && isOurs(ending) && ending >= *changed)
        timings.back().gone = millisecondsBetween(*changed, ending);
  }
  return timings;
}

Spread spreadOf(std::vector<double> values) {
  if (values.empty()) return {};
  std::sort(values.begin(), values.end());
  const auto at = [&](double share) {
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
    return values[std::max<std::size_t>(rank, 1) - 1];
  };
  return {values.size(), at(0.5), at(0.9)};
}

}  // namespace nimbletype
