#pragma once
#include <string>

#include "overlay/ghost/ghost_layout.h"

namespace nimbletype {

// The diagnostic line about a layout that has a box.
std::string boxLine(const GhostContent& content, const GhostLayout& layout, const GhostArea& area);

}  // namespace nimbletype
