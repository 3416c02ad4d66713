#include "platform/linux/desktop/tesseract_lines.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace nimbletype {
namespace {

// level, page, block, paragraph, line, word, left, top, width, height, confidence, text
constexpr std::size_t columns = 12;
constexpr double leastConfidence = 60;
constexpr double wordLevel = 5;

using Row = std::array<std::string_view, columns>;

std::optional<Row> rowOf(std::string_view line) {
  Row row;
  for (std::size_t i = 0; i < columns; ++i) {
    const std::size_t end = i + 1 < columns ? line.find('\t') : line.size();
    if (end == std::string_view::npos) return std::nullopt;
    row[i] = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return row;
}

double number(std::string_view s) {
  double value = -1;
  std::from_chars(s.data(), s.data() + s.size(), value);
  return value;
}

TopLeftRect unionOf(const TopLeftRect& a, const TopLeftRect& b) {
  const double x = std::min(a.x, b.x), y = std::min(a.y, b.y);
  return {x, y, std::max(a.right(), b.right()) - x, std::max(a.bottom(), b.bottom()) - y};
}

bool isSameLine(const Row& a, const Row& b) {
  return std::equal(a.begin() + 1, a.begin() + 5, b.begin() + 1);
}

}  // namespace

std::vector<PlacedText> tesseractLines(std::string_view table, const PictureOrigin& origin) {
  std::vector<PlacedText> lines;
  std::optional<Row> previous;
  while (!table.empty()) {
    const std::size_t end = std::min(table.find('\n'), table.size());
    const auto row = rowOf(table.substr(0, end));
    table.remove_prefix(std::min(end + 1, table.size()));
    if (!row || number((*row)[0]) != wordLevel || number((*row)[10]) < leastConfidence) continue;
    const TopLeftRect box{origin.x + number((*row)[6]) / origin.scale,
                          origin.y + number((*row)[7]) / origin.scale, number((*row)[8]) / origin.scale,
                          number((*row)[9]) / origin.scale};
    if (previous && isSameLine(*previous, *row)) {
      lines.back().text.append(" ").append((*row)[11]);
      lines.back().frame = unionOf(lines.back().frame, box);
    } else {
      lines.push_back({std::string((*row)[11]), box});
    }
    previous = row;
  }
  return lines;
}

}  // namespace nimbletype
