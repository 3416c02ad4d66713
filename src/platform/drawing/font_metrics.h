#pragma once
#include <string_view>

#include "platform/drawing/overlay_surface.h"

namespace nimbletype {

struct LineMetrics {
  double ascender = 0, descender = 0, leading = 0;  // points; the descender is negative
};

// Measures text exactly as the overlay draws it.
class FontMetrics {
 public:
  virtual ~FontMetrics() = default;
  virtual bool exists(std::string_view name) const = 0;
  virtual LineMetrics line(const FontSpec& font) const = 0;
  // Of a line in this font that holds this text, some characters of which may be another font's.
  virtual LineMetrics lineHolding(const FontSpec& font, std::string_view) const { return line(font); }
  virtual double width(const FontSpec& font, std::string_view text) const = 0;
};

}  // namespace nimbletype
