#include "platform/scripted/desktop/scripted_screens.h"

namespace nimbletype {

double ScriptedScreens::mainHeight() const {
  for (const Screen& screen : screens)
    if (screen.frame.x == 0 && screen.frame.y == 0) return screen.frame.height;
  return screens.empty() ? 0 : screens.front().frame.height;
}

}  // namespace nimbletype
