#pragma once
#include <cstdint>
#include <string>

namespace nimbletype::text {

// With the digits, groups and marks of `locale`, such as "de_DE"; empty for the system's own.
std::string formatNumber(std::int64_t number, const std::string& locale);
std::string formatDecimal(double number, int fractionDigits, const std::string& locale);

}  // namespace nimbletype::text
