#pragma once
#include <string_view>

#include "platform/desktop/geometry.h"

namespace nimbletype {

// Whether a caret stands above or below the field it is said to be in: the field is still scrolling to it, or
// its frame is told wrongly.
bool isOutOfSight(const TopLeftRect& caret, const TopLeftRect& frame);

// Some applications answer for every paragraph as if it were the first one. Whether a caret's box lies on the
// first line of the field although the text before it, read from the field's start, has several line breaks
// and still fits the field. Such a text may have been scrolled, so this is a suspicion only.
bool isSuspiciouslyHigh(const TopLeftRect& caret, const TopLeftRect& frame, std::string_view before);

// What settles it: characters so far apart cannot stand on one line.
bool isOnLineOf(const TopLeftRect& caret, const TopLeftRect& firstCharacter);

}  // namespace nimbletype
