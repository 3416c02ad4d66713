#include "text/format/date_format.h"

#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <memory>

namespace nimbletype::text {
namespace {

// Making a formatter costs more than everything else on the way to a request, so the last one is kept.
struct Formatter {
  std::string locale, timeZone;
  std::unique_ptr<icu::SimpleDateFormat> format;
};

std::unique_ptr<icu::SimpleDateFormat> makeFormat(const std::string& locale, const std::string& timeZone) {
  UErrorCode error = U_ZERO_ERROR;
  const icu::Locale icuLocale = locale.empty() ? icu::Locale::getDefault() : icu::Locale(locale.c_str());
  auto format =
      std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString("EEEE d MMMM yyyy"), icuLocale, error);
  if (U_FAILURE(error)) return nullptr;
  if (!timeZone.empty())
    format->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(timeZone)));
  return format;
}

}  // namespace

std::string longDate(std::chrono::sys_time<std::chrono::milliseconds> time, const std::string& locale,
                     const std::string& timeZone) {
  thread_local Formatter last;
  if (!last.format || last.locale != locale || last.timeZone != timeZone)
    last = {locale, timeZone, makeFormat(locale, timeZone)};
  if (!last.format) return {};
  icu::UnicodeString formatted;
  last.format->format(static_cast<UDate>(time.time_since_epoch().count()), formatted);
  std::string utf8;
  return formatted.toUTF8String(utf8);
}

std::string shortTime(std::chrono::sys_time<std::chrono::milliseconds> time, const std::string& locale,
                      const std::string& timeZone) {
  const icu::Locale icuLocale = locale.empty() ? icu::Locale::getDefault() : icu::Locale(locale.c_str());
  const std::unique_ptr<icu::DateFormat> format(
      icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, icuLocale));
  if (!format) return {};
  if (!timeZone.empty())
    format->adoptTimeZone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(timeZone)));
  icu::UnicodeString formatted;
  format->format(static_cast<UDate>(time.time_since_epoch().count()), formatted);
  std::string utf8;
  return formatted.toUTF8String(utf8);
}

bool isTimeZone(const std::string& name) {
  const std::unique_ptr<icu::TimeZone> zone(
      icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
  return *zone != icu::TimeZone::getUnknown();
}

}  // namespace nimbletype::text
