#include "personal/stats/stats_text.h"

#include <gtest/gtest.h>

#include "personal/stats/day_stats.h"

namespace nimbletype {
namespace {

TEST(SavedWords, CountsPiecesWithALetterOrADigit) {
  struct Case {
    const char* text;
    std::int64_t words;
  };
  for (const Case& c :
       {Case{"", 0}, Case{"Hello, world!", 2}, Case{" — ", 0}, Case{"... ! ?", 0}, Case{"don't re-use", 2},
        Case{" 3 \"x\"", 2}, Case{"a\u00a0b\nc\td", 4}, Case{"🙂 👍🏽", 0}, Case{"été, Ωμέγα", 2},
        Case{"你好 世界", 2}, Case{"٣٤", 1}, Case{"(-7)", 1}})
    EXPECT_EQ(savedWords(c.text), c.words) << c.text;
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
  struct Case {
    double minutes;
    const char *locale, *text;
  };
  for (const Case& c :
       {Case{0, "en_US", "0 min"}, Case{0.001, "en_US", "under a minute"},
        Case{0.99, "en_US", "under a minute"}, Case{1, "en_US", "1 min"}, Case{1.5, "en_US", "2 min"},
        Case{2.5, "en_US", "3 min"}, Case{89.4, "en_US", "89 min"}, Case{89.9, "en_US", "90 min"},
        Case{90, "en_US", "1.5 h"}, Case{100, "en_US", "1.7 h"}, Case{120, "en_US", "2.0 h"},
        Case{100, "de_DE", "1,7 h"}, Case{599.9, "en_US", "10.0 h"}, Case{600, "en_US", "10 h"},
        Case{650, "en_US", "11 h"}, Case{60.0 * 12345, "en_US", "12,345 h"}, Case{100, "ar_EG", "١٫٧ h"}})
    EXPECT_EQ(minutesText(c.minutes, c.locale), c.text) << c.minutes;
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
  struct Case {
    std::int64_t today, week;
    const char* text;
  };
  for (const Case& c :
       {Case{0, 0, "Start typing anywhere. Nimbletype keeps count here."}, Case{0, 12, "12 words this week."},
        Case{1, 1, "Under a minute of typing today. 1 word this week."},
        Case{39, 1200, "Under a minute of typing today. 1,200 words this week."},
        Case{40, 40, "About 1 min of typing today. 40 words this week."},
        Case{45, 45, "About 1 min of typing today. 45 words this week."},
        Case{4000, 4000, "About 1.7 h of typing today. 4,000 words this week."}})
    EXPECT_EQ(statsSummary(c.today, c.week, "en_US"), c.text);
}

}  // namespace
}  // namespace nimbletype
