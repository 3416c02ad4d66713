#include "personal/stats/stats_text.h"

#include <gtest/gtest.h>

#include <tuple>

#include "personal/stats/day_stats.h"

namespace nimbletype {
namespace {

TEST(SavedWords, CountsPiecesWithALetterOrADigit) {
  const std::pair<std::int64_t, std::vector<const char*>> table[] = {
      {0, {"", " — ", "... ! ?", "🙂 👍🏽"}},
      {1, {"٣٤", "(-7)"}},
      {2, {"Hello, world!", "don't re-use", " 3 \"x\"", "été, Ωμέγα", "你好 世界"}},
      {4, {"a\u00a0b\nc\td"}}};
  for (const auto& [words, texts] : table)
    for (const char* text : texts) EXPECT_EQ(savedWords(text), words) << text;
}

TEST(Percentile, IsAValueThatOccurred) {
  EXPECT_FALSE(percentile({}, 0.5));
  EXPECT_EQ(percentile({7}, 0.9), 7);
  EXPECT_EQ(percentile({30, 10, 20}, 0.5), 20);
  EXPECT_EQ(percentile({4, 3, 2, 1}, 0.5), 2);
  EXPECT_EQ(percentile({100, 1, 2, 3, 4, 5, 6, 7, 8, 9}, 0.9), 9);
  EXPECT_EQ(percentile({100, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 0.9), 10);
}

TEST(StatsText, SaysMinutes) {
  const std::pair<double, const char*> table[] = {{0, "0 min"},
                                                  {0.001, "under a minute"},
                                                  {0.99, "under a minute"},
                                                  {1, "1 min"},
                                                  {1.5, "2 min"},
                                                  {2.5, "3 min"},
                                                  {89.4, "89 min"},
                                                  {89.9, "90 min"},
                                                  {90, "1.5 h"},
                                                  {120, "2.0 h"},
                                                  {599.9, "10.0 h"},
                                                  {600, "10 h"},
                                                  {650, "11 h"},
                                                  {60.0 * 12345, "12,345 h"}};
  for (const auto& [minutes, text] : table) EXPECT_EQ(minutesText(minutes, "en_US"), text) << minutes;
  EXPECT_EQ(minutesText(100, "de_DE"), "1,7 h");
  EXPECT_EQ(minutesText(100, "ar_EG"), "١٫٧ h");
}

TEST(StatsText, GroupsDigitsAsTheUserDoes) {
  struct Case {
    std::int64_t words;
    const char *locale, *text;
  };
  for (const Case& c : {Case{0, "en_US", "0 words"}, Case{1, "en_US", "1 word"}, Case{2, "en_US", "2 words"},
                        Case{1234567, "en_US", "1,234,567 words"}, Case{1234567, "de_DE", "1.234.567 words"},
                        Case{1234567, "en_IN", "12,34,567 words"}, Case{12345, "fr_FR", "12\u202f345 words"},
                        Case{1234, "es_ES", "1234 words"}, Case{1234, "ar_EG", "١٬٢٣٤ words"}})
    EXPECT_EQ(wordCountText(c.words, c.locale), c.text) << c.locale;
}

TEST(StatsText, SumsUpTodayAndThisWeek) {
  const std::tuple<std::int64_t, std::int64_t, const char*> table[] = {
      {0, 0, "Start typing anywhere. Nimbletype keeps count here."},
      {0, 12, "12 words this week."},
      {1, 1, "Under a minute of typing today. 1 word this week."},
      {39, 1200, "Under a minute of typing today. 1,200 words this week."},
      {40, 40, "About 1 min of typing today. 40 words this week."},
      {4000, 4000, "About 1.7 h of typing today. 4,000 words this week."}};
  for (const auto& [today, week, text] : table) EXPECT_EQ(statsSummary(today, week, "en_US"), text);
}

}  // namespace
}  // namespace nimbletype
