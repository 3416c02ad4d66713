#pragma once
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace nimbletype::text {

// A day of the Gregorian calendar, wherever it is.
using Day = std::chrono::year_month_day;

// "2025-03-07".
std::string dayKey(Day day);
// None for what no day is written as.
std::optional<Day> dayFromKey(std::string_view key);

// Moments and days in one time zone, through daylight saving and whatever else the zone has seen.
class LocalCalendar {
 public:
  using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

  // An IANA name; empty, or a name that is not known, for the system's own zone.
  explicit LocalCalendar(const std::string& timeZone);
  ~LocalCalendar();
  LocalCalendar(LocalCalendar&&) noexcept;
  LocalCalendar& operator=(LocalCalendar&&) noexcept;

  Day dayOf(Moment moment) const;
  // The first moment of the day: not midnight where the clocks skip that.
  Moment startOf(Day day) const;
  // The day before it that the zone has seen; one crossing of the date line left out a whole day.
  Day before(Day day) const { return dayOf(startOf(day) - std::chrono::milliseconds(1)); }
  // The end of the day, and the first moment of the next.
  Moment endOf(Day day) const;

 private:
  struct Icu;
  std::unique_ptr<Icu> icu_;
};

}  // namespace nimbletype::text
