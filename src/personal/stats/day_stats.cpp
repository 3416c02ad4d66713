#include "personal/stats/day_stats.h"

#include <algorithm>
#include <cmath>

#include "text/text.h"

namespace nimbletype {
namespace {

bool hasWords(const StatsDays& days, text::Day day) {
  const auto found = days.find(day);
  return found != days.end() && found->second.words > 0;
}

}  // namespace

std::int64_t savedWords(std::string_view accepted) {
  std::int64_t words = 0;
  bool counted = false;  // the piece that is being read
  for (const std::string_view character : text::characters(accepted)) {
    if (text::isWhitespace(character)) {
      counted = false;
    } else if (!counted && (text::isLetter(character) || text::isDigit(character))) {
      counted = true;
      ++words;
    }
  }
  return words;
}

int streak(const StatsDays& days, text::Day today, const text::LocalCalendar& calendar) {
  int length = 0;
  text::Day day = hasWords(days, today) ? today : calendar.before(today);
  for (; hasWords(days, day); day = calendar.before(day)) ++length;
  return length;
}

AppWords wordsByApp(const StatsDays& days) {
  AppWords totals;
  for (const auto& [day, stats] : days)
    for (const auto& [app, words] : stats.apps) totals[app] += words;
  return totals;
}

std::vector<std::pair<std::string, std::int64_t>> largestFirst(const AppWords& apps) {
  std::vector<std::pair<std::string, std::int64_t>> list(apps.begin(), apps.end());
  std::ranges::stable_sort(list, [](const auto& a, const auto& b) { return a.second > b.second; });
  return list;
}

std::optional<std::int64_t> percentile(std::vector<std::int64_t> values, double share) {
  if (values.empty()) return std::nullopt;
  const auto count = static_cast<double>(values.size());
  const auto rank = static_cast<std::ptrdiff_t>(std::clamp(std::ceil(share * count), 1.0, count));
  const auto nth = values.begin() + (rank - 1);
  std::ranges::nth_element(values, nth);
  return *nth;
}

}  // namespace nimbletype
