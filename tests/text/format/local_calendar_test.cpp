#include "text/format/local_calendar.h"

#include <gtest/gtest.h>

#include "text/format/timestamp.h"

namespace nimbletype::text {
namespace {

using namespace std::chrono;

Moment at(std::string_view time) {
  return fromIso8601(time).value();
}

TEST(LocalCalendar, TellsTheDayWhereTheUserIs) {
  struct Case {
    const char *zone, *time, *day;
  };
  for (const Case& c : {
           Case{"UTC", "2025-03-07T23:59:59.999Z", "2025-03-07"},
           Case{"UTC", "2025-03-08T00:00:00Z", "2025-03-08"},
           Case{"Asia/Tokyo", "2025-03-07T15:00:00Z", "2025-03-08"},
           Case{"America/Los_Angeles", "2025-03-07T07:59:59Z", "2025-03-06"},
           Case{"Pacific/Kiritimati", "2025-03-07T10:00:00Z", "2025-03-08"},
           Case{"Asia/Kathmandu", "2025-03-07T18:14:59Z", "2025-03-07"},
           Case{"Asia/Kathmandu", "2025-03-07T18:15:00Z", "2025-03-08"},
           Case{"UTC", "2024-02-29T12:00:00Z", "2024-02-29"},
           Case{"UTC", "1969-12-31T23:59:59Z", "1969-12-31"},
           // The day of 25 hours ends an hour later, and the one of 23 hours an hour earlier.
           Case{"Europe/Berlin", "2025-10-26T22:59:59Z", "2025-10-26"},
           Case{"Europe/Berlin", "2025-10-26T23:00:00Z", "2025-10-27"},
           Case{"Europe/Berlin", "2025-03-30T21:59:59Z", "2025-03-30"},
           Case{"Europe/Berlin", "2025-03-30T22:00:00Z", "2025-03-31"},
           // A minute after midnight the clocks went back an hour, and the day before went on.
           Case{"America/St_Johns", "2010-11-07T02:30:30Z", "2010-11-07"},
           Case{"America/St_Johns", "2010-11-07T02:31:30Z", "2010-11-06"},
       })
    EXPECT_EQ(dayKey(LocalCalendar(c.zone).dayOf(at(c.time))), c.day) << c.zone << " " << c.time;
}

TEST(LocalCalendar, KnowsWhenADayStartsAndWhichOneWentBefore) {
  struct Case {
    const char *zone, *day, *start, *before;
  };
  for (const Case& c : {
           Case{"UTC", "2025-03-01", "2025-03-01T00:00:00Z", "2025-02-28"},
           Case{"UTC", "2024-03-01", "2024-03-01T00:00:00Z", "2024-02-29"},
           Case{"UTC", "2025-01-01", "2025-01-01T00:00:00Z", "2024-12-31"},
           Case{"Europe/Berlin", "2025-03-31", "2025-03-30T22:00:00Z", "2025-03-30"},
           Case{"Europe/Berlin", "2025-10-27", "2025-10-26T23:00:00Z", "2025-10-26"},
           // There was no midnight.
           Case{"America/Sao_Paulo", "2018-11-04", "2018-11-04T03:00:00Z", "2018-11-03"},
           // There were two.
           Case{"America/St_Johns", "2010-11-07", "2010-11-07T02:30:00Z", "2010-11-06"},
           // There was no 30th: the islands went over the date line.
           Case{"Pacific/Apia", "2011-12-31", "2011-12-30T10:00:00Z", "2011-12-29"},
       }) {
    const LocalCalendar calendar(c.zone);
    const Day day = dayFromKey(c.day).value();
    EXPECT_EQ(toIso8601(calendar.startOf(day)), c.start) << c.zone;
    EXPECT_EQ(dayKey(calendar.before(day)), c.before) << c.zone << " " << c.day;
  }
}

TEST(LocalCalendar, EveryDayStartsWithItsFirstMillisecond) {
  for (const char* zone :
       {"UTC", "Europe/Berlin", "America/Sao_Paulo", "Asia/Beirut", "Australia/Lord_Howe"}) {
    const LocalCalendar calendar(zone);
    for (sys_days day = 2015y / 1 / 1; day < sys_days(2020y / 1 / 1); day += days(1)) {
      const Moment start = calendar.startOf(Day(day));
      ASSERT_EQ(calendar.dayOf(start), Day(day)) << zone << " " << dayKey(Day(day));
      ASSERT_EQ(calendar.dayOf(start - milliseconds(1)), Day(day - days(1))) << zone;
      ASSERT_EQ(calendar.endOf(Day(day)), calendar.startOf(Day(day + days(1))));
    }
  }
}

TEST(LocalCalendar, ReadsOnlyWhatIsADay) {
  EXPECT_EQ(dayKey(dayFromKey("0099-12-31").value()), "0099-12-31");
  for (const char* key : {"", "2025-3-7", "2025-02-29", "2025-13-01", "2025-00-10", "2025/03/07",
                          " 2025-03-07", "2025-03-07T", "+025-03-07", "2025-03-0x"})
    EXPECT_FALSE(dayFromKey(key)) << key;
}

}  // namespace
}  // namespace nimbletype::text
