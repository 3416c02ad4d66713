#include "tools/nimbletype-cli/stats_chart.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace nimbletype::cli {
namespace {

TEST(StatsChart, EndsItsAxisAtARoundNumber) {
  const std::pair<std::int64_t, std::int64_t> table[] = {{0, 2},   {2, 2},   {3, 4},    {9, 20},
                                                         {20, 20}, {21, 40}, {81, 200}, {4001, 6000}};
  for (const auto& [most, end] : table) EXPECT_EQ(axisEnd(most), end) << most;
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
  for (const ChartLine& line : wordChart(std::vector(30, ChartDay{days[0].day, 9'999'999}), "en_US"))
    EXPECT_LE(text::characterCount(line.axis + line.bars), 80U) << "fits into a terminal";
}

}  // namespace
}  // namespace nimbletype::cli
