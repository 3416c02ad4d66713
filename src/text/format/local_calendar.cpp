#include "text/format/local_calendar.h"

#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <array>
#include <cstdio>

namespace nimbletype::text {
namespace {

using namespace std::chrono;

std::unique_ptr<icu::TimeZone> makeZone(const std::string& name) {
  if (name.empty()) return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createDefault());
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
  if (*zone == icu::TimeZone::getUnknown()) zone.reset(icu::TimeZone::createDefault());
  return zone;
}

std::optional<int> number(std::string_view digits) {
  int value = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

}  // namespace

std::string dayKey(Day day) {
  std::array<char, 32> key{};
  std::snprintf(key.data(), key.size(), "%04d-%02u-%02u", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
  return key.data();
}

std::optional<Day> dayFromKey(std::string_view key) {
  if (key.size() != 10 || key[4] != '-' || key[7] != '-') return std::nullopt;
  const auto y = number(key.substr(0, 4)), m = number(key.substr(5, 2)), d = number(key.substr(8, 2));
  if (!y || !m || !d) return std::nullopt;
  const Day day{year(*y), month(static_cast<unsigned>(*m)), std::chrono::day(static_cast<unsigned>(*d))};
  return day.ok() ? std::optional(day) : std::nullopt;
}

struct LocalCalendar::Icu {
  explicit Icu(const std::string& timeZone)
      : calendar(makeZone(timeZone).release(), icu::Locale::getRoot(), error) {
    // Where the clocks skip midnight the day starts when they have; where midnight comes twice, the first
    // time.
    calendar.setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
    calendar.setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
  }
  UErrorCode error = U_ZERO_ERROR;
  icu::GregorianCalendar calendar;
};

LocalCalendar::LocalCalendar(const std::string& timeZone) : icu_(std::make_unique<Icu>(timeZone)) {}
LocalCalendar::~LocalCalendar() = default;
LocalCalendar::LocalCalendar(LocalCalendar&&) noexcept = default;
LocalCalendar& LocalCalendar::operator=(LocalCalendar&&) noexcept = default;

Day LocalCalendar::dayOf(Moment moment) const {
  std::int32_t standard = 0, saving = 0;
  UErrorCode error = U_ZERO_ERROR;
  icu_->calendar.getTimeZone().getOffset(static_cast<UDate>(moment.time_since_epoch().count()), false,
                                         standard, saving, error);
  return Day(floor<days>(moment + milliseconds(standard) + milliseconds(saving)));
}

LocalCalendar::Moment LocalCalendar::startOf(Day day) const {
  icu::GregorianCalendar& calendar = icu_->calendar;
  calendar.clear();
  calendar.set(static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())) - 1,
               static_cast<int>(static_cast<unsigned>(day.day())), 0, 0, 0);
  UErrorCode error = U_ZERO_ERROR;
  return Moment(milliseconds(static_cast<std::int64_t>(calendar.getTime(error))));
}

LocalCalendar::Moment LocalCalendar::endOf(Day day) const {
  return startOf(Day(sys_days(day) + days(1)));
}

}  // namespace nimbletype::text
