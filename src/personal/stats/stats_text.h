#pragma once
#include <cstdint>
#include <string>

namespace nimbletype {

// What the figures say in words. `locale` gives digits, groups and the decimal mark, such as "en_US"; empty
// for the system's own.

// Of typing saved, at 40 words a minute.
double minutesSaved(std::int64_t words);
// "under a minute", "12 min", "1.7 h"
std::string minutesText(double minutes, const std::string& locale);
// "1 word", "1,234 words"
std::string wordCountText(std::int64_t words, const std::string& locale);
// "Start your streak today.", "1 day", "12 days"
std::string streakText(int days, const std::string& locale);
std::string statsSummary(std::int64_t wordsToday, std::int64_t wordsThisWeek, const std::string& locale);

}  // namespace nimbletype
