#pragma once
#include "platform/drawing/overlay_surface.h"

namespace nimbletype {

struct GhostColors {
  Color text;
  Color box;  // behind wrapped rows
  Color keycap, keycapEdge, keycapLabel;
};

GhostColors ghostColors(bool tinted, bool dark);

}  // namespace nimbletype
