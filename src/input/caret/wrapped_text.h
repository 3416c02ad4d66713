#pragma once
#include <string_view>

#include "platform/drawing/font_metrics.h"

namespace nimbletype {

// How a text fills lines of a given width.
struct WrappedText {
  int lines = 1;             // an empty text has one
  double lastLineWidth = 0;  // points, blanks at the end included
  bool operator==(const WrappedText&) const = default;
};

// Breaks lines before words, as text views do, and words that are wider than a line between characters.
// Blanks never begin a line: they hang over its end.
WrappedText wrap(std::string_view text, double room, const FontSpec& font, const FontMetrics& metrics);

}  // namespace nimbletype
