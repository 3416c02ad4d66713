#include "overlay/lists/list_draw.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

const FontSpec rowFont{"", 13}, noteFont{"", 11}, symbolFont{"", 20};
constexpr double plateRadius = 9, highlightRadius = 5, borderWidth = 1;
constexpr double highlightInset = 5, symbolRoom = 32;

constexpr Color grey(double white, double alpha = 1) {
  return {white, white, white, alpha};
}

// Paints rows from the top of a list down.
class RowPainter {
 public:
  RowPainter(const BottomLeftRect& frame, const ListShape& shape, const FontMetrics& metrics)
      : list{frame, {}}, shape_(shape), metrics_(metrics), top_(frame.height - shape.padding / 2) {}

  void plate(const ListColors& colors) {
    const BottomLeftRect whole{0, 0, list.frame.width, list.frame.height};
    list.items.push_back(BoxDraw{whole, plateRadius, colors.border});
    list.items.push_back(BoxDraw{inset(whole, borderWidth), plateRadius - borderWidth, colors.plate});
  }

  void highlight(const Color& color) {
    const double width = list.frame.width - 2 * highlightInset;
    list.items.push_back(
        BoxDraw{{highlightInset, bottom(), width, shape_.rowHeight}, highlightRadius, color});
  }

  void text(std::string_view text, const FontSpec& font, const Color& color, double indent) {
    const double x = shape_.leftShift + indent;
    const double room = list.frame.width - x - shape_.leftShift;
    const LineMetrics line = metrics_.line(font);
    const double baseline = bottom() + (shape_.rowHeight - line.ascender - line.descender) / 2;
    list.items.push_back(TextDraw{fitted(text, room, font, metrics_), font, color, x, baseline});
  }

  void next() { top_ -= shape_.rowHeight; }

  DrawList list;

 private:
  static BottomLeftRect inset(const BottomLeftRect& r, double by) {
    return {r.x + by, r.y + by, r.width - 2 * by, r.height - 2 * by};
  }
  double bottom() const { return top_ - shape_.rowHeight; }

  const ListShape& shape_;
  const FontMetrics& metrics_;
  double top_;
};

}  // namespace

ListColors listColors(bool dark) {
  const Color highlight{0.04, 0.40, 0.85, 1};
  if (dark) return {grey(0.17), grey(0.33), grey(0.93), grey(0.62), highlight, grey(1)};
  return {grey(0.975), grey(0.78), grey(0.1), grey(0.45), highlight, grey(1)};
}

DrawList drawList(const BottomLeftRect& frame, const ListShape& shape, const ListContent& content,
                  const ListColors& colors, const FontMetrics& metrics) {
  RowPainter painter(frame, shape, metrics);
  painter.plate(colors);
  const bool hasSymbols =
      std::ranges::any_of(content.rows, [](const ListRow& r) { return !r.symbol.empty(); });
  for (std::size_t i = 0; i < content.rows.size(); ++i) {
    const ListRow& row = content.rows[i];
    const bool isSelected = i == content.selected;
    const Color& color = isSelected ? colors.highlightedText : colors.text;
    if (isSelected) painter.highlight(colors.highlight);
    if (!row.symbol.empty()) painter.text(row.symbol, symbolFont, color, 0);
    painter.text(row.text, rowFont, color, hasSymbols ? symbolRoom : 0);
    painter.next();
  }
  if (content.note) painter.text(*content.note, noteFont, colors.quiet, 0);
  return std::move(painter.list);
}

std::string fitted(std::string_view text, double width, const FontSpec& font, const FontMetrics& metrics) {
  if (metrics.width(font, text) <= width) return std::string(text);
  constexpr std::string_view ellipsis = "…";
  const double room = width - metrics.width(font, ellipsis);
  const auto characters = text::characters(text);
  std::size_t length = 0, fits = 0;
  for (const std::string_view character : characters) {
    length += character.size();
    if (metrics.width(font, text.substr(0, length)) > room) break;
    fits = length;
  }
  return std::string(text::trimmedEnd(text.substr(0, fits))) + std::string(ellipsis);
}

}  // namespace nimbletype
