#include "overlay/ghost/ghost_layout.h"

#include <algorithm>
#include <cmath>

#include "overlay/ghost/ghost_font.h"
#include "overlay/ghost/ghost_reading.h"
#include "overlay/ghost/ghost_rows.h"

namespace nimbletype {
namespace {

constexpr double fieldPadding = 6;  // from the field's edges to its text
constexpr double boxGap = 3;        // between the caret's row and the box
constexpr double boxPadding = 5;    // above and below the box's rows
constexpr double narrowestRow = 24;
constexpr double hintGap = 6, hintPadding = 10, hintHeight = 15;

BottomLeftRect united(const BottomLeftRect& a, const BottomLeftRect& b) {
  const double x = std::min(a.x, b.x), y = std::min(a.y, b.y);
  return {x, y, std::max(a.right(), b.right()) - x, std::max(a.top(), b.top()) - y};
}

// The height of the baseline of a line that is centred in a row.
double baselineIn(double rowHeight, const LineMetrics& line) {
  return (rowHeight - (line.ascender - line.descender)) / 2 - line.descender;
}

BottomLeftRect wholePoints(const BottomLeftRect& r) {
  const double x = std::floor(r.x), y = std::floor(r.y);
  return {x, y, std::ceil(r.right()) - x, std::ceil(r.top()) - y};
}

class Layouter {
 public:
  Layouter(const GhostContent& content, const FontSpec& fieldFont, const GhostArea& area,
           const FontMetrics& metrics)
      : content_(content), area_(area), metrics_(metrics) {
    layout_.font = ghostFont(content, fieldFont);
    measureRow(caretLine(content, fieldFont, metrics));
  }

  GhostLayout run(std::string_view hintLabel) {
    const std::string text = (content_.kind == GhostContent::Kind::correction ? "→ " : "") + content_.text;
    if (content_.anchored) {
      layOutAnchored(text);
    } else if (!content_.allowWrap || lineStart() >= content_.caretRect.x) {
      addLine(text, content_.caretRect.x, rowBottom_, false);
    } else {
      layOutWrapped(text);
    }
    if (content_.hint) addHint(hintLabel);
    nudge();
    layout_.frame = wholePoints(extent());
    return std::move(layout_);
  }

 private:
  // The field's line is centred on the caret, as toolkits spread what they add to a line's height evenly or
  // by less than a pixel; so its baseline is the application's own. The suggestion stands on it, too.
  void measureRow(const LineMetrics& field) {
    const LineMetrics line = metrics_.line(layout_.font);
    const double lineHeight = std::ceil(line.ascender - line.descender + line.leading);
    layout_.lineHeight = std::max(content_.caretRect.height, lineHeight);
    baselineInRow_ = baselineIn(layout_.lineHeight, line);
    rowBottom_ = content_.caretRect.y + baselineIn(content_.caretRect.height, field) - baselineInRow_;
  }

  double lineStart() const {
    if (content_.lineStartX) return *content_.lineStartX;
    return content_.fieldFrame ? content_.fieldFrame->x + fieldPadding : content_.caretRect.x;
  }

  double rightLimit() const {
    if (content_.anchored) return area_.rect.right();
    const double fieldEdge = content_.fieldFrame ? content_.fieldFrame->right() : content_.caretRect.right();
    return std::min(area_.rect.right(), fieldEdge);
  }

  double widthOf(std::string_view text) const { return std::ceil(metrics_.width(layout_.font, text)); }

  void addLine(std::string text, double x, double bottom, bool inBox) {
    const double width = inBox ? std::max(narrowestRow, widthOf(text)) : widthOf(text);
    layout_.lines.push_back(
        {std::move(text), inBox, {x, bottom, width, layout_.lineHeight}, bottom + baselineInRow_});
  }

  // Against the caret alone, and shifted only so far that the screen holds it.
  void layOutAnchored(const std::string& text) {
    const double farthest = area_.rect.right() - fieldPadding - widthOf(text);
    addLine(text, std::max(area_.rect.x, std::min(content_.caretRect.x, farthest)), rowBottom_, false);
  }

  void layOutWrapped(std::string_view text) {
    const auto words = ghostWords(text);
    const double room = rightLimit() - fieldPadding - content_.caretRect.x;
    const std::size_t count = wordsThatFit(text, words, room, layout_.font, metrics_);
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < count; ++i) bytes += words[i].size();
    if (bytes > 0) addLine(std::string(text.substr(0, bytes)), content_.caretRect.x, rowBottom_, false);
    if (bytes < text.size()) addBox(text.substr(bytes));
  }

  void addBox(std::string_view text) {
    const double left =
        content_.fieldFrame ? std::max(content_.fieldFrame->x + 2, lineStart() - 10) : lineStart() - 10;
    const double textX = std::max(lineStart(), left + 4);
    const double room = std::max(narrowestRow, rightLimit() - fieldPadding - textX);
    layout_.rowsBelow = rowsIn(content_.caretRect.y - area_.rect.y);
    const bool below = layout_.rowsBelow >= 1;
    const long most = below ? layout_.rowsBelow : std::max(1L, rowsIn(area_.rect.top() - rowTop()));
    const auto rows = rowsOf(text, room, static_cast<std::size_t>(most));

    const double height = static_cast<double>(rows.size()) * layout_.lineHeight + 2 * boxPadding;
    const double bottom = below ? rowBottom_ - boxGap - height : rowTop() + boxGap;
    double widest = narrowestRow, rowY = bottom + height - boxPadding;
    for (const std::string& row : rows) {
      addLine(row, textX, rowY -= layout_.lineHeight, true);
      widest = std::max(widest, layout_.lines.back().rect.width);
    }
    const double right = std::max(std::min(rightLimit(), textX + widest + 6), left + narrowestRow);
    layout_.container = {left, bottom, right - left, height};
  }

  // Rows of a box for which there is this much height between the caret's row and the area's edge.
  long rowsIn(double height) const {
    return static_cast<long>(
        std::max(0.0, std::floor((height - boxGap - 2 * boxPadding) / layout_.lineHeight)));
  }

  std::vector<std::string> rowsOf(std::string_view text, double room, std::size_t most) const {
    auto rows = breakIntoRows(text, room, layout_.font, metrics_);
    if (rows.size() <= most) return rows;
    rows.resize(most);
    rows.back() = ellipsized(rows.back(), room, layout_.font, metrics_);
    return rows;
  }

  double rowTop() const { return rowBottom_ + layout_.lineHeight; }

  void addHint(std::string_view label) {
    if (layout_.lines.empty()) return;
    const double x = layout_.lines.back().rect.right() + hintGap;
    const double width = metrics_.width(hintFont, label) + hintPadding;
    if (x + width > rightLimit()) return;
    layout_.hintX = x;
    layout_.hintWidth = width;
  }

  void nudge() {
    for (auto& line : layout_.lines) {
      line.rect.y += content_.verticalNudge;
      line.baseline += content_.verticalNudge;
    }
    if (layout_.container) layout_.container->y += content_.verticalNudge;
  }

  BottomLeftRect extent() const {
    if (layout_.lines.empty()) return content_.caretRect;
    BottomLeftRect all = layout_.lines.front().rect;
    for (const auto& line : layout_.lines) all = united(all, line.rect);
    if (layout_.container) all = united(all, *layout_.container);
    return layout_.hintX ? united(all, keycapRect(layout_)) : all;
  }

  const GhostContent& content_;
  const GhostArea& area_;
  const FontMetrics& metrics_;
  GhostLayout layout_;
  double rowBottom_ = 0, baselineInRow_ = 0;
};

}  // namespace

GhostLayout layoutGhost(const GhostContent& content, const FontSpec& fieldFont, const GhostArea& area,
                        std::string_view hintLabel, const FontMetrics& metrics) {
  const auto direction = lineDirection(content, fieldFont, metrics);
  const GhostContent inOrder = inReadingOrder(content, direction, fieldFont, metrics);
  if (direction == text::Direction::leftToRight)
    return Layouter(inOrder, fieldFont, area, metrics).run(hintLabel);
  return mirrored(Layouter(inOrder, fieldFont, mirrored(area), metrics).run(hintLabel));
}

BottomLeftRect keycapRect(const GhostLayout& layout) {
  const BottomLeftRect& row = layout.lines.back().rect;
  return {layout.hintX.value_or(row.right()), row.y + (row.height - hintHeight) / 2, layout.hintWidth,
          hintHeight};
}

}  // namespace nimbletype
