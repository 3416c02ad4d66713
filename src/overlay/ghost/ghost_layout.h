#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "overlay/ghost/ghost_area.h"
#include "overlay/ghost/ghost_content.h"
#include "platform/drawing/font_metrics.h"

namespace nimbletype {

// Where a ghost's text stands on screen.
struct GhostLayout {
  struct Line {
    std::string text;
    bool inBox = false;
    BottomLeftRect rect;  // as wide as the text, as high as a row
    double baseline = 0;
    bool rightToLeft = false;  // the direction of the line it continues; its text ends at the right then
    bool operator==(const Line&) const = default;
  };
  BottomLeftRect frame;  // whole points
  std::vector<Line> lines;
  double lineHeight = 0;
  std::optional<double> hintX;
  double hintWidth = 0;
  FontSpec font;
  std::optional<BottomLeftRect> container;
  long rowsBelow = 0;  // rows of the box that would fit under the caret's row
  bool operator==(const GhostLayout&) const = default;
};

// The font of the keycap's label.
inline const FontSpec hintFont{.name = "", .size = 9, .medium = true};

// In the field's font, which the content may want scaled.
GhostLayout layoutGhost(const GhostContent& content, const FontSpec& fieldFont, const GhostArea& area,
                        std::string_view hintLabel, const FontMetrics& metrics);

// Where the keycap stands; only for a layout that has a `hintX`.
BottomLeftRect keycapRect(const GhostLayout& layout);

}  // namespace nimbletype
