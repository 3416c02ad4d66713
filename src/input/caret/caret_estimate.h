#pragma once
#include <optional>
#include <string_view>

#include "input/caret/caret_geometry.h"
#include "platform/drawing/font_metrics.h"

namespace nimbletype {

// The font size to measure with when a field of this height tells of none, in points.
double usualFontSize(double fieldHeight);

// Where the caret stands when the text before it is set in this font inside the field's frame. The frame has
// a positive width and height.
CaretPlace estimateCaret(std::string_view before, const TopLeftRect& frame, const FontSpec& font,
                         const FontMetrics& metrics);

}  // namespace nimbletype
