#pragma once
#import <AppKit/AppKit.h>

#include "platform/drawing/overlay_surface.h"

namespace nimbletype {

// The font of that name, nil where there is none.
NSFont* namedFont(std::string_view name, double size);
// The font that is drawn and measured for a wish: never nil.
NSFont* fontFor(const FontSpec& font);

}  // namespace nimbletype
