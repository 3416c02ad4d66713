#include "personal/stats/stats_text.h"

#include <cmath>

#include "text/format/number_format.h"

namespace nimbletype {
namespace {

constexpr double wordsAMinute = 40, minutesAnHour = 60;
constexpr double shownAsMinutes = 90, shownInTenths = 10;  // minutes and hours below these

std::string rounded(double number, const std::string& locale) {
  return text::formatNumber(std::llround(number), locale);
}

std::string todaySentence(std::int64_t words, const std::string& locale) {
  if (words == 0) return {};
  const double minutes = minutesSaved(words);
  if (minutes < 1) return "Under a minute of typing today. ";
  return "About " + minutesText(minutes, locale) + " of typing today. ";
}

}  // namespace

double minutesSaved(std::int64_t words) {
  return static_cast<double>(words) / wordsAMinute;
}

std::string minutesText(double minutes, const std::string& locale) {
  if (!(minutes > 0)) return text::formatNumber(0, locale) + " min";
  if (minutes < 1) return "under a minute";
  if (minutes < shownAsMinutes) return rounded(minutes, locale) + " min";
  const double hours = minutes / minutesAnHour;
  if (hours < shownInTenths) return text::formatDecimal(hours, 1, locale) + " h";
  return rounded(hours, locale) + " h";
}

std::string wordCountText(std::int64_t words, const std::string& locale) {
  return words == 1 ? "1 word" : text::formatNumber(words, locale) + " words";
}

std::string streakText(int days, const std::string& locale) {
  if (days == 0) return "Start your streak today.";
  return text::formatNumber(days, locale) + (days == 1 ? " day" : " days");
}

std::string statsSummary(std::int64_t wordsToday, std::int64_t wordsThisWeek, const std::string& locale) {
  if (wordsThisWeek < 1) return "Start typing anywhere. Nimbletype keeps count here.";
  return todaySentence(wordsToday, locale) + wordCountText(wordsThisWeek, locale) + " this week.";
}

}  // namespace nimbletype
