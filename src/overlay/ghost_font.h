#pragma once
#include "overlay/ghost_content.h"
#include "platform/font_metrics.h"

namespace nimbletype {

// The content's font, or the system font of the same size where it names none that exists.
FontSpec ghostFont(const GhostContent& content, const FontMetrics& metrics);

// Whether the application sets its text in whole pixel advances, told by comparing the width of the caret's
// line on screen with both ways of setting it; none where the line does not tell them apart.
std::optional<bool> usesWholeAdvances(const GhostContent& content, FontSpec font, const FontMetrics& metrics);

}  // namespace nimbletype
