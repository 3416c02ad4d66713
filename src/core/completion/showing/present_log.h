#pragma once
#include <string>
#include <string_view>

#include "overlay/ghost/ghost_content.h"

namespace nimbletype {

// The diagnostic line for one presentation: where the ghost goes and in what font.
std::string presentLogLine(const GhostContent& content, std::string_view before);

}  // namespace nimbletype
