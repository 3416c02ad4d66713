#pragma once
#include <chrono>
#include <string>

namespace nimbletype::text {

// "Friday 7 March 2025" in the language of `locale` (such as "en_US"; empty for the user's own), on the day
// it is in `timeZone` (an IANA name; empty for the user's own).
std::string longDate(std::chrono::sys_time<std::chrono::milliseconds> time, const std::string& locale,
                     const std::string& timeZone);

// "14:05" or "2:05 PM", as people of `locale` write the time it is in `timeZone`; both as above.
std::string shortTime(std::chrono::sys_time<std::chrono::milliseconds> time, const std::string& locale,
                      const std::string& timeZone);

// Whether ICU knows a time zone of this name.
bool isTimeZone(const std::string& name);

}  // namespace nimbletype::text
