#pragma once
#include "overlay/ghost/ghost_content.h"
#include "platform/drawing/font_metrics.h"

namespace nimbletype {

// The field's font, or the system font of the same size where the content names none that exists.
FontSpec fieldFont(const GhostContent& content, const FontMetrics& metrics);
// The same in the size in which the suggestion is drawn.
FontSpec ghostFont(const GhostContent& content, FontSpec fieldFont);

// The lines of the field around the caret: of its font, or with those of the fonts that lend the characters
// it lacks, whichever is as high as the caret.
LineMetrics caretLine(const GhostContent& content, const FontSpec& fieldFont, const FontMetrics& metrics);

// How much larger the caret's line is set than its font's size tells, as in a page that is zoomed; none where
// the line's width and height do not agree on that.
std::optional<double> zoomOf(const GhostContent& content, const FontSpec& font, const FontMetrics& metrics);

// Whether the application sets its text in whole pixel advances, told by comparing the width of the caret's
// line on screen with both ways of setting it; none where the line does not tell them apart.
std::optional<bool> usesWholeAdvances(const GhostContent& content, FontSpec font, const FontMetrics& metrics);

}  // namespace nimbletype
