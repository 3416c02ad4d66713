#include "text/format/number_format.h"

#include <unicode/locid.h>
#include <unicode/numberformatter.h>

namespace nimbletype::text {
namespace {

namespace number = icu::number;

number::LocalizedNumberFormatter formatter(const std::string& locale) {
  return number::NumberFormatter::withLocale(locale.empty() ? icu::Locale::getDefault()
                                                            : icu::Locale(locale.c_str()));
}

std::string utf8(const icu::UnicodeString& text) {
  std::string converted;
  return text.toUTF8String(converted);
}

}  // namespace

std::string formatNumber(std::int64_t number, const std::string& locale) {
  UErrorCode error = U_ZERO_ERROR;
  return utf8(formatter(locale).formatInt(number, error).toString(error));
}

std::string formatDecimal(double number, int fractionDigits, const std::string& locale) {
  UErrorCode error = U_ZERO_ERROR;
  return utf8(formatter(locale)
                  .precision(number::Precision::fixedFraction(fractionDigits))
                  .formatDouble(number, error)
                  .toString(error));
}

}  // namespace nimbletype::text
