#pragma once
#include <set>
#include <string>

#include "platform/drawing/font_metrics.h"

namespace nimbletype {

// Every character is half the font's size wide, or that rounded up to a whole point; the line reaches eight
// tenths of the size above the baseline and two tenths below.
class FixedFontMetrics final : public FontMetrics {
 public:
  bool exists(std::string_view name) const override;
  LineMetrics line(const FontSpec& font) const override;
  double width(const FontSpec& font, std::string_view text) const override;

  std::set<std::string, std::less<>> fonts{"Menlo", "Monospace"};
};

}  // namespace nimbletype
