#include "personal/stats/stats_store.h"

#include <algorithm>

#include "personal/stats/stats_file.h"
#include "personal/stats/stats_text.h"
#include "text/text.h"

namespace nimbletype {
namespace {

// The clock may be set and the user may travel meanwhile. Where it is set back around midnight a day comes
// again after its end.
constexpr Milliseconds shortestWait = std::chrono::seconds(1), longestWait = std::chrono::minutes(15);

void keepLatest(std::vector<std::int64_t>& list, std::size_t most) {
  if (list.size() > most) list.erase(list.begin(), list.end() - static_cast<std::ptrdiff_t>(most));
}

}  // namespace

StatsStore::StatsStore(FileStore& file, MainLoop& loop, SystemLog& log, const RegionSource& region)
    : loop_(loop),
      region_(region),
      file_(std::make_unique<StatsFile>(file, log)),
      snapshot_(file_->load()),
      appTotals_(wordsByApp(snapshot_.days)) {
  keepLatest(snapshot_.latencies, mostLatencies);
  awaitNextDay();
}

StatsStore::~StatsStore() {
  if (unsaved_) saveNow();
}

void StatsStore::recordShown(WallTime date) {
  ++snapshot_.days[dayOf(date)].shown;
  changed();
}

void StatsStore::recordAccept(const std::string& text, const std::string& appKey, WallTime date) {
  const std::int64_t words = savedWords(text);
  DayStats& day = snapshot_.days[dayOf(date)];
  day.words += words;
  day.characters += static_cast<std::int64_t>(text::characterCount(text));
  ++day.accepts;
  day.apps[appKey] += words;
  appTotals_[appKey] += words;
  changed();
}

void StatsStore::recordLatency(Milliseconds took) {
  snapshot_.latencies.push_back(std::max<std::int64_t>(took.count(), 0));
  keepLatest(snapshot_.latencies, mostLatencies);
  changed();
}

void StatsStore::reset() {
  snapshot_ = {};
  appTotals_.clear();
  file_->forgetRest();
  changed();
}

void StatsStore::saveNow() {
  save_.cancel();
  unsaved_ = !file_->save(snapshot_);
}

DayStats StatsStore::day(WallTime date) const {
  const auto found = snapshot_.days.find(dayOf(date));
  return found == snapshot_.days.end() ? DayStats() : found->second;
}

std::vector<StatsStore::DatedStats> StatsStore::lastDays(int count) const {
  const text::LocalCalendar& here = calendar();
  std::vector<DatedStats> list;
  for (text::Day day = here.dayOf(loop_.wallNow()); count > 0; --count, day = here.before(day)) {
    const auto found = snapshot_.days.find(day);
    list.push_back({here.startOf(day), found == snapshot_.days.end() ? DayStats() : found->second});
  }
  std::ranges::reverse(list);
  return list;
}

int StatsStore::streak() const {
  return nimbletype::streak(snapshot_.days, dayOf(loop_.wallNow()), calendar());
}

std::int64_t StatsStore::wordsThisWeek() const {
  std::int64_t words = 0;
  for (const DatedStats& day : lastDays(daysOfWeek)) words += day.stats.words;
  return words;
}

std::vector<std::pair<std::string, std::int64_t>> StatsStore::topAppsToday() const {
  return largestFirst(today().apps);
}

std::string StatsStore::summary() const {
  return statsSummary(today().words, wordsThisWeek(), region_.region().locale);
}

nlohmann::ordered_json StatsStore::json() const {
  return file_->json(snapshot_);
}

const text::LocalCalendar& StatsStore::calendar() const {
  std::string zone = region_.region().timeZone;
  if (!calendar_ || zone != timeZone_) {
    calendar_.emplace(zone);
    timeZone_ = std::move(zone);
  }
  return *calendar_;
}

std::int64_t StatsStore::total(std::int64_t DayStats::*figure) const {
  std::int64_t sum = 0;
  for (const auto& [day, stats] : snapshot_.days) sum += stats.*figure;
  return sum;
}

void StatsStore::changed() {
  unsaved_ = true;
  save_ = loop_.after(saveDelay, [this] { saveNow(); });
  observers_.notify();
}

void StatsStore::awaitNextDay() {
  const WallTime now = loop_.wallNow();
  const text::Day day = dayOf(now);
  nextDay_ = loop_.after(std::clamp(calendar().endOf(day) - now, shortestWait, longestWait), [this, day] {
    awaitNextDay();
    if (dayOf(loop_.wallNow()) != day) observers_.notify();
  });
}

}  // namespace nimbletype
