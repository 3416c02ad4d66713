#include "platform/scripted/drawing/fixed_font_metrics.h"

#include <algorithm>
#include <cmath>

namespace nimbletype {

bool FixedFontMetrics::exists(std::string_view name) const {
  return fonts.contains(name);
}

LineMetrics FixedFontMetrics::line(const FontSpec& font) const {
  return {font.size * 0.8, font.size * -0.2, 0};
}

double FixedFontMetrics::width(const FontSpec& font, std::string_view text) const {
  const auto codePoints =
      std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
  const double advance = font.size / 2;
  return static_cast<double>(codePoints) * (font.wholeAdvances ? std::ceil(advance) : advance);
}

}  // namespace nimbletype
