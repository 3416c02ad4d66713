#include "platform/mac/drawing/mac_fonts.h"

#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {

// The system's own fonts have names that begin with a dot. Asked for by name they come back as another font,
// so they count as not found, which leads to the system font.
NSFont* namedFont(std::string_view name, double size) {
  if (name.empty() || name.front() == '.') return nil;
  return [NSFont fontWithName:nsString(name) size:size];
}

NSFont* fontFor(const FontSpec& font) {
  NSFont* named = namedFont(font.name, font.size);
  const NSFontWeight weight = font.medium ? NSFontWeightMedium : NSFontWeightRegular;
  return named ? named : [NSFont systemFontOfSize:font.size weight:weight];
}

}  // namespace nimbletype
