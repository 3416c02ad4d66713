#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "text/format/local_calendar.h"

namespace nimbletype::cli {

struct ChartDay {
  text::Day day;
  std::int64_t words = 0;
};

// A line of a chart; only the bars are ever in colour. No blanks at the end.
struct ChartLine {
  std::string axis, bars;
};

// A bar of block characters for each day, two columns wide, over an axis with dates. A day with words has a
// bar that can be seen.
std::vector<ChartLine> wordChart(const std::vector<ChartDay>& days, const std::string& locale);

// Where an axis for values up to this ends: an even number with one digit that is not zero, at least 2.
std::int64_t axisEnd(std::int64_t most);

}  // namespace nimbletype::cli
