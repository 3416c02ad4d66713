#include "platform/mac/drawing/mac_font_metrics.h"

#import <CoreText/CoreText.h>

#include <algorithm>

#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/drawing/mac_fonts.h"

namespace nimbletype {

bool MacFontMetrics::exists(std::string_view name) const {
  return namedFont(name, 12) != nil;
}

LineMetrics MacFontMetrics::line(const FontSpec& font) const {
  NSFont* found = fontFor(font);
  return {found.ascender, found.descender, found.leading};
}

LineMetrics MacFontMetrics::lineHolding(const FontSpec& font, std::string_view text) const {
  NSAttributedString* string =
      [[NSAttributedString alloc] initWithString:nsString(text)
                                      attributes:@{NSFontAttributeName : fontFor(font)}];
  CTLineRef set = CTLineCreateWithAttributedString((__bridge CFAttributedStringRef)string);
  if (!set) return line(font);
  CGFloat ascent = 0, descent = 0, leading = 0;
  CTLineGetTypographicBounds(set, &ascent, &descent, &leading);
  CFRelease(set);
  const LineMetrics own = line(font);
  return {std::max(own.ascender, ascent), std::min(own.descender, -descent), own.leading};
}

double MacFontMetrics::width(const FontSpec& font, std::string_view text) const {
  return [nsString(text) sizeWithAttributes:@{NSFontAttributeName : fontFor(font)}].width;
}

}  // namespace nimbletype
