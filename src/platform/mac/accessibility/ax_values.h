#pragma once
#include "platform/accessibility/accessibility.h"
#include "platform/mac/bridge/cf_ref.h"

namespace nimbletype {

// What Accessibility answered, as the port's value; an error, or a type that the port does not know, is
// absent. A point is a rectangle without size, a size a rectangle at the origin, an attributed string its
// text, a URL its address, an array its elements.
AttributeValue attributeValue(CFTypeRef value);

// The rectangle of a position and a size; absent unless both are there.
AttributeValue frameValue(CFTypeRef position, CFTypeRef size);

// The font at the start of an attributed string as Accessibility hands it out.
AttributeValue fontValue(CFTypeRef attributedString);

// The other way, for writes and parameters; empty for an absent value and for a font.
CFRef<CFTypeRef> accessibilityValue(const AttributeValue& value);

}  // namespace nimbletype
