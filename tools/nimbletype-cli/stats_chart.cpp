#include "stats_chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "text/format/number_format.h"
#include "text/text.h"

namespace nimbletype::cli {
namespace {

constexpr int rows = 6, steps = 8;  // of a row
constexpr std::size_t columnsADay = 2, daysALabel = 7;
constexpr std::array<std::string_view, steps + 1> blocks{" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};

std::string padded(const std::string& label, std::size_t width) {
  return std::string(width - std::min(width, text::characterCount(label)), ' ') + label;
}

int height(std::int64_t words, std::int64_t end) {
  if (words <= 0) return 0;
  const double share = static_cast<double>(words) / static_cast<double>(end);
  return std::max(1, static_cast<int>(std::lround(share * rows * steps)));
}

std::string barsOfRow(const std::vector<ChartDay>& days, int row, std::int64_t end) {
  std::string bars;
  for (const ChartDay& day : days) {
    const int filled = std::clamp(height(day.words, end) - row * steps, 0, steps);
    (bars += ' ') += blocks[static_cast<std::size_t>(filled)];
  }
  return std::string(text::trimmedEnd(bars));
}

std::string dateLabel(text::Day day) {
  constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  return std::to_string(static_cast<unsigned>(day.day())) + " " +
         months[static_cast<unsigned>(day.month()) - 1];
}

// Under every seventh bar, counted from the last one.
std::string dates(const std::vector<ChartDay>& days) {
  std::string line;
  for (std::size_t i = (days.size() - 1) % daysALabel; i < days.size(); i += daysALabel) {
    line.resize(std::max(line.size(), i * columnsADay + 1), ' ');
    line += dateLabel(days[i].day);
  }
  return line;
}

std::string horizontal(std::size_t width) {
  std::string line;
  for (std::size_t i = 0; i < width; ++i) line += "─";
  return line;
}

}  // namespace

std::int64_t axisEnd(std::int64_t most) {
  for (std::int64_t power = 1;; power *= 10)
    for (const std::int64_t digit : {2, 4, 6, 8})
      if (digit * power >= most) return digit * power;
}

std::vector<ChartLine> wordChart(const std::vector<ChartDay>& days, const std::string& locale) {
  if (days.empty()) return {};
  const std::int64_t end = axisEnd(std::ranges::max(days, {}, &ChartDay::words).words);
  const std::string top = text::formatNumber(end, locale), middle = text::formatNumber(end / 2, locale);
  const std::size_t width = std::max(text::characterCount(top), text::characterCount(middle));
  std::vector<ChartLine> lines;
  for (int row = rows - 1; row >= 0; --row) {
    const bool isTop = row == rows - 1, isMiddle = row == rows / 2 - 1;
    lines.push_back({padded(isTop      ? top
                            : isMiddle ? middle
                                       : "",
                            width) +
                         (isTop || isMiddle ? " ┤" : " │"),
                     barsOfRow(days, row, end)});
  }
  lines.push_back(
      {padded(text::formatNumber(0, locale), width) + " └" + horizontal(days.size() * columnsADay), ""});
  lines.push_back({padded("", width) + "  " + dates(days), ""});
  return lines;
}

}  // namespace nimbletype::cli
