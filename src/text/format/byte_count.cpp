#include "text/format/byte_count.h"

#include <unicode/locid.h>
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>

#include <cmath>
#include <cstddef>

namespace nimbletype::text {
namespace {

struct Unit {
  icu::MeasureUnit (*unit)();
  double bytes;
  int fractionDigits;
};

constexpr Unit units[] = {{icu::MeasureUnit::getByte, 1, 0},
                          {icu::MeasureUnit::getKilobyte, 1e3, 0},
                          {icu::MeasureUnit::getMegabyte, 1e6, 1},
                          {icu::MeasureUnit::getGigabyte, 1e9, 2},
                          {icu::MeasureUnit::getTerabyte, 1e12, 2}};

// In this unit, as it will be shown: rounding may make a thousand of it.
double rounded(double bytes, const Unit& unit) {
  const double scale = std::pow(10.0, unit.fractionDigits);
  return std::round(bytes / unit.bytes * scale) / scale;
}

const Unit& unitFor(double bytes) {
  std::size_t chosen = 0;
  while (chosen + 1 < std::size(units) && rounded(bytes, units[chosen]) >= 1000) ++chosen;
  return units[chosen];
}

}  // namespace

std::string formatByteCount(std::int64_t bytes, const std::string& locale) {
  const auto amount = static_cast<double>(bytes);
  const Unit& unit = unitFor(amount);
  UErrorCode error = U_ZERO_ERROR;
  const auto formatted = icu::number::NumberFormatter::withLocale(icu::Locale(locale.c_str()))
                             .unit(unit.unit())
                             .unitWidth(unit.bytes == 1 ? UNUM_UNIT_WIDTH_FULL_NAME : UNUM_UNIT_WIDTH_SHORT)
                             .precision(icu::number::Precision::maxFraction(unit.fractionDigits))
                             .formatDouble(rounded(amount, unit), error)
                             .toString(error);
  std::string text;
  formatted.toUTF8String(text);
  // People know it with a capital.
  if (const auto small = text.find("kB"); small != std::string::npos) text[small] = 'K';
  return text;
}

}  // namespace nimbletype::text
