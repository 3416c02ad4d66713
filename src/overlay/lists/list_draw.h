#pragma once
#include <optional>
#include <span>
#include <string>

#include "overlay/lists/list_placement.h"
#include "platform/drawing/font_metrics.h"

namespace nimbletype {

struct ListRow {
  std::string text;
  std::string symbol = {};  // before the text; where any row has one, all texts make room for it
  bool operator==(const ListRow&) const = default;
};

struct ListColors {
  Color plate, border, text, quiet, highlight, highlightedText;
};
ListColors listColors(bool dark);

// What a list shows. `note` is one more row, quieter, that cannot be chosen.
struct ListContent {
  std::span<const ListRow> rows;
  std::size_t selected = 0;
  std::optional<std::string> note;
};

// What to paint in the frame: the plate, the rows, the highlighted one standing out. Text that is too long
// ends in "…".
DrawList drawList(const BottomLeftRect& frame, const ListShape& shape, const ListContent& content,
                  const ListColors& colors, const FontMetrics& metrics);

// The text whole, or as many of its characters as fit into `width` points with "…" after them.
std::string fitted(std::string_view text, double width, const FontSpec& font, const FontMetrics& metrics);

}  // namespace nimbletype
