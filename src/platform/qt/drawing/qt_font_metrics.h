#pragma once
#include "platform/drawing/font_metrics.h"
#include "platform/qt/drawing/qt_typesetter.h"

namespace nimbletype {

// The port over Qt's fonts. Points are pixels of the screen: a size that an application tells in typographic
// points is to be multiplied by the screen's dots per inch and divided by 72 before it comes here.
class QtFontMetrics final : public FontMetrics {
 public:
  bool exists(std::string_view name) const override;
  LineMetrics line(const FontSpec& font) const override { return typesetter_.line(font); }
  LineMetrics lineHolding(const FontSpec& font, std::string_view text) const override {
    return typesetter_.lineHolding(font, text);
  }
  double width(const FontSpec& font, std::string_view text) const override {
    return typesetter_.width(font, text);
  }

 private:
  mutable QtTypesetter typesetter_;  // keeps the fonts it has opened
};

}  // namespace nimbletype
