#include "platform/mac/mac_font_metrics.h"

#include "platform/mac/mac_fonts.h"
#include "platform/mac/mac_text.h"

namespace nimbletype {

bool MacFontMetrics::exists(std::string_view name) const {
  return namedFont(name, 12) != nil;
}

LineMetrics MacFontMetrics::line(const FontSpec& font) const {
  NSFont* found = fontFor(font);
  return {found.ascender, found.descender, found.leading};
}

double MacFontMetrics::width(const FontSpec& font, std::string_view text) const {
  return [nsString(text) sizeWithAttributes:@{NSFontAttributeName : fontFor(font)}].width;
}

}  // namespace nimbletype
