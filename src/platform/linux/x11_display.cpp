#include "platform/linux/x11_display.h"

#include "platform/linux/xcb_support.h"

namespace nimbletype {

bool canOpenDisplay() {
  return connectToDisplay({}) != nullptr;
}

}  // namespace nimbletype
