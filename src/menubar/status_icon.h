#pragma once
#include "menubar/menu_content.h"
#include "platform/desktop/status_bar.h"

namespace nimbletype {

// What the item in the menu bar shows of this state.
StatusIcon statusIcon(const MenuState& state);

}  // namespace nimbletype
