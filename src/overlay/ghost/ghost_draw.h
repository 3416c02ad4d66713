#pragma once
#include <string_view>

#include "overlay/ghost/ghost_layout.h"
#include "overlay/ghost/ghost_style.h"

namespace nimbletype {

// What to paint for a layout: the box, the rows of text, the keycap.
DrawList drawGhost(const GhostLayout& layout, const GhostColors& colors, std::string_view hintLabel,
                   const FontMetrics& metrics);

}  // namespace nimbletype
