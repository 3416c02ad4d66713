#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "text/format/local_calendar.h"

namespace nimbletype {

// One day's figures. None of them is ever negative.
struct DayStats {
  std::int64_t words = 0;  // saved by accepted suggestions
  std::int64_t characters = 0;
  std::int64_t accepts = 0;
  std::int64_t shown = 0;
  std::map<std::string, std::int64_t> apps{};  // words by app key, "app:" and a bundle identifier
  bool operator==(const DayStats&) const = default;
};

using StatsDays = std::map<text::Day, DayStats>;
using AppWords = std::map<std::string, std::int64_t>;

// Everything that is kept: the days that have any figure, and how long in milliseconds the latest suggestions
// took, oldest first.
struct StatsSnapshot {
  StatsDays days{};
  std::vector<std::int64_t> latencies{};
  bool operator==(const StatsSnapshot&) const = default;
};

// The words that accepting this text saves: pieces between blanks with a letter or a digit in them.
std::int64_t savedWords(std::string_view accepted);

// Days with words saved that follow one another up to today, or to yesterday while today has none.
int streak(const StatsDays& days, text::Day today, const text::LocalCalendar& calendar);

AppWords wordsByApp(const StatsDays& days);
// Largest first; equal ones by key.
std::vector<std::pair<std::string, std::int64_t>> largestFirst(const AppWords& apps);

// The value that this share of the values, from 0 to 1, does not exceed; none of no values.
std::optional<std::int64_t> percentile(std::vector<std::int64_t> values, double share);

}  // namespace nimbletype
