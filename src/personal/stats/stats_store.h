#pragma once
#include <nlohmann/json_fwd.hpp>

#include "personal/stats/day_stats.h"
#include "platform/language/region_source.h"
#include "platform/system/main_loop.h"
#include "platform/system/observers.h"

namespace nimbletype {

class FileStore;
class StatsFile;
class SystemLog;

// The user's own figures, day by day as the days are where the user is, kept in a file that is written two
// seconds after the last change. Nothing is ever dropped for its age. Main thread only.
class StatsStore {
 public:
  static constexpr Milliseconds saveDelay{2000};
  static constexpr std::size_t mostLatencies = 400;
  static constexpr int daysOfWeek = 7;  // "this week" is today and the six days before

  struct DatedStats {
    WallTime date;  // the start of the day
    DayStats stats;
  };

  StatsStore(FileStore& file, MainLoop& loop, SystemLog& log, const RegionSource& region);
  ~StatsStore();  // saves what is still unsaved
  StatsStore(const StatsStore&) = delete;
  StatsStore& operator=(const StatsStore&) = delete;

  // A new suggestion was shown; one that is drawn again, or grows, is none.
  void recordShown(WallTime date);
  // A suggestion, or a part of one, was inserted.
  void recordAccept(const std::string& text, const std::string& appKey, WallTime date);
  // A suggestion arrived this long after it was asked for.
  void recordLatency(Milliseconds took);
  // Forgets everything, and what else the file held.
  void reset();
  void saveNow();

  DayStats day(WallTime date) const;
  DayStats today() const { return day(loop_.wallNow()); }
  // The days up to today, oldest first, those without figures included.
  std::vector<DatedStats> lastDays(int count) const;
  int streak() const;
  std::int64_t wordsThisWeek() const;
  std::int64_t totalWords() const { return total(&DayStats::words); }
  std::int64_t totalAccepts() const { return total(&DayStats::accepts); }
  std::int64_t totalShown() const { return total(&DayStats::shown); }
  // Words by app key, largest first.
  std::vector<std::pair<std::string, std::int64_t>> topAppsToday() const;
  const AppWords& appTotals() const { return appTotals_; }
  // In milliseconds, oldest first, and what half and nine in ten of them stay within.
  const std::vector<std::int64_t>& latencies() const { return snapshot_.latencies; }
  std::optional<std::int64_t> typicalLatency() const { return percentile(latencies(), 0.5); }
  std::optional<std::int64_t> nineInTenLatency() const { return percentile(latencies(), 0.9); }
  // One or two sentences on today and this week.
  std::string summary() const;
  // What the file holds once it is saved.
  nlohmann::ordered_json json() const;

  // Told after every change, and when another day has begun.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

 private:
  const text::LocalCalendar& calendar() const;
  text::Day dayOf(WallTime date) const { return calendar().dayOf(date); }
  std::int64_t total(std::int64_t DayStats::*figure) const;
  void changed();
  void awaitNextDay();

  MainLoop& loop_;
  const RegionSource& region_;
  std::unique_ptr<StatsFile> file_;
  StatsSnapshot snapshot_;
  AppWords appTotals_;
  mutable std::optional<text::LocalCalendar> calendar_;
  mutable std::string timeZone_;  // the calendar's
  Observers observers_;
  bool unsaved_ = false;
  Task save_, nextDay_;
};

}  // namespace nimbletype
