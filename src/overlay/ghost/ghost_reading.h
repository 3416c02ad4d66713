#pragma once
#include "overlay/ghost/ghost_area.h"
#include "overlay/ghost/ghost_content.h"
#include "overlay/ghost/ghost_layout.h"
#include "platform/drawing/font_metrics.h"
#include "text/direction.h"

namespace nimbletype {

// Which way the caret's line runs: as its first letter does, unless the caret could not stand where it stands
// on such a line, as in web pages that set every line from the left.
text::Direction lineDirection(const GhostContent& content, const FontSpec& font, const FontMetrics& metrics);

// Where text that follows is drawn: at the caret, or at the far side of the words before it that stand
// against the line's direction.
double endOfLineX(const GhostContent& content, text::Direction direction, const FontSpec& font,
                  const FontMetrics& metrics);

// A content as if its line ran from left to right, so that one layout serves both ways: mirrored about zero
// where it does not, with the caret's place at the line's end.
GhostContent inReadingOrder(GhostContent content, text::Direction direction, const FontSpec& font,
                            const FontMetrics& metrics);

GhostArea mirrored(GhostArea area);
GhostLayout mirrored(GhostLayout layout);

}  // namespace nimbletype
