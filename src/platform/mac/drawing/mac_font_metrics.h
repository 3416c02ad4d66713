#pragma once
#include "platform/drawing/font_metrics.h"

namespace nimbletype {

class MacFontMetrics final : public FontMetrics {
 public:
  bool exists(std::string_view name) const override;
  LineMetrics line(const FontSpec& font) const override;
  LineMetrics lineHolding(const FontSpec& font, std::string_view text) const override;
  double width(const FontSpec& font, std::string_view text) const override;
};

}  // namespace nimbletype
