#include "platform/linux/x11/x11_display.h"

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

bool canOpenDisplay() {
  return connectToDisplay({}) != nullptr;
}

}  // namespace nimbletype
