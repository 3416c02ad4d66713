#include "tools/nimbletype-cli/stats_chart.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace nimbletype::cli {
namespace {

TEST(StatsChart, EndsItsAxisAtARoundNumber) {
  struct Case {
    std::int64_t most, end;
  };
  for (const Case& c : {Case{0, 2}, Case{1, 2}, Case{2, 2}, Case{3, 4}, Case{9, 20}, Case{20, 20},
                        Case{21, 40}, Case{81, 200}, Case{4001, 6000}})
    EXPECT_EQ(axisEnd(c.most), c.end) << c.most;
}

TEST(StatsChart, DrawsABarForEachDay) {
  std::vector<ChartDay> days;
  const auto first = std::chrono::sys_days(text::dayFromKey("2024-02-24").value());
  for (const int words : {2000, 1000, 1, 0, 0, 500, 0, 1500})
    days.push_back({text::Day(first + std::chrono::days(days.size())), words});
  std::string chart;
  for (const ChartLine& line : wordChart(days, "en_US")) chart += line.axis + line.bars + "\n";
  EXPECT_EQ(chart,
            "2,000 ┤ █\n"
            "      │ █             ▄\n"
            "      │ █             █\n"
            "1,000 ┤ █ █           █\n"
            "      │ █ █       ▄   █\n"
            "      │ █ █ ▁     █   █\n"
            "    0 └────────────────\n"
            "        24 Feb        2 Mar\n");
  EXPECT_TRUE(wordChart({}, "en_US").empty());
}

TEST(StatsChart, FitsIntoATerminal) {
  const std::vector<ChartDay> days(30, {text::dayFromKey("2025-12-31").value(), 9'999'999});
  for (const ChartLine& line : wordChart(days, "en_US"))
    EXPECT_LE(text::characterCount(line.axis + line.bars), 80U);
}

}  // namespace
}  // namespace nimbletype::cli
