#include "text/format/local_calendar.h"

#include <gtest/gtest.h>

#include <array>

#include "text/format/timestamp.h"

namespace nimbletype::text {
namespace {

using namespace std::chrono;

TEST(LocalCalendar, TellsTheDayWhereTheUserIs) {
  const std::array<const char*, 3> table[] = {
      {"UTC", "2025-03-07T23:59:59.999Z", "2025-03-07"},
      {"UTC", "2025-03-08T00:00:00Z", "2025-03-08"},
      {"Asia/Tokyo", "2025-03-07T15:00:00Z", "2025-03-08"},
      {"America/Los_Angeles", "2025-03-07T07:59:59Z", "2025-03-06"},
      {"Pacific/Kiritimati", "2025-03-07T10:00:00Z", "2025-03-08"},
      {"Asia/Kathmandu", "2025-03-07T18:14:59Z", "2025-03-07"},
      {"Asia/Kathmandu", "2025-03-07T18:15:00Z", "2025-03-08"},
      {"UTC", "2024-02-29T12:00:00Z", "2024-02-29"},
      {"UTC", "1969-12-31T23:59:59Z", "1969-12-31"},
      // The day of 25 hours ends an hour later, and the one of 23 hours an hour earlier.
      {"Europe/Berlin", "2025-10-26T22:59:59Z", "2025-10-26"},
      {"Europe/Berlin", "2025-10-26T23:00:00Z", "2025-10-27"},
      {"Europe/Berlin", "2025-03-30T21:59:59Z", "2025-03-30"},
      {"Europe/Berlin", "2025-03-30T22:00:00Z", "2025-03-31"},
      // A minute after midnight the clocks went back an hour, and the day before went on.
      {"America/St_Johns", "2010-11-07T02:30:30Z", "2010-11-07"},
      {"America/St_Johns", "2010-11-07T02:31:30Z", "2010-11-06"}};
  for (const auto& [zone, time, day] : table)
    EXPECT_EQ(dayKey(LocalCalendar(zone).dayOf(fromIso8601(time).value())), day) << zone << " " << time;
}

TEST(LocalCalendar, EveryDayStartsWithItsFirstMillisecondAndFollowsAnother) {
  for (const char* zone :
       {"UTC", "Europe/Berlin", "America/Sao_Paulo", "Asia/Beirut", "Australia/Lord_Howe"}) {
    const LocalCalendar calendar(zone);
    for (sys_days day = 2015y / 1 / 1; day < sys_days(2020y / 1 / 1); day += days(1)) {
      const Moment start = calendar.startOf(Day(day));
      ASSERT_EQ(calendar.dayOf(start), Day(day)) << zone << " " << dayKey(Day(day));
      ASSERT_EQ(calendar.dayOf(start - milliseconds(1)), Day(day - days(1))) << zone;
      ASSERT_EQ(calendar.endOf(Day(day)), calendar.startOf(Day(day + days(1))));
      ASSERT_EQ(calendar.before(Day(day)), Day(day - days(1))) << zone;
    }
  }
  // There were two midnights.
  EXPECT_EQ(toIso8601(LocalCalendar("America/St_Johns").startOf(2010y / 11 / 7)), "2010-11-07T02:30:00Z");
  // There was no 30th: the islands went over the date line.
  EXPECT_EQ(toIso8601(LocalCalendar("Pacific/Apia").startOf(2011y / 12 / 31)), "2011-12-30T10:00:00Z");
  EXPECT_EQ(LocalCalendar("Pacific/Apia").before(2011y / 12 / 31), Day(2011y / 12 / 29));
}

TEST(LocalCalendar, ReadsOnlyWhatIsADay) {
  EXPECT_EQ(dayKey(dayFromKey("0099-12-31").value()), "0099-12-31");
  for (const char* key : {"", "2025-3-7", "2025-02-29", "2025-13-01", "2025-00-10", "2025/03/07",
                          " 2025-03-07", "2025-03-07T", "+025-03-07", "2025-03-0x"})
    EXPECT_FALSE(dayFromKey(key)) << key;
}

}  // namespace
}  // namespace nimbletype::text
