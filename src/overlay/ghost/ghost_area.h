#pragma once
#include <span>

#include "overlay/ghost/ghost_content.h"
#include "platform/desktop/screens.h"

namespace nimbletype {

// Where a ghost may stand. A caret on no screen is not clamped: its area is far larger than any desktop.
struct GhostArea {
  BottomLeftRect rect{-1e6, -1e6, 2e6, 2e6};
  double screenBottom = -1e6;
  bool operator==(const GhostArea&) const = default;
};

// The visible frame of the caret's screen, stretched to the screen's edge where the field itself reaches out
// of the visible frame.
GhostArea ghostArea(const GhostContent& content, std::span<const Screen> screens);

}  // namespace nimbletype
