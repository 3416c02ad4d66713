#pragma once
#include "platform/desktop/screens.h"

namespace nimbletype {

// Screens as a test arranges them; one of 1440 by 900 with a bar at its top unless told otherwise.
class ScriptedScreens final : public Screens {
 public:
  std::vector<Screen> all() const override { return screens; }
  double mainHeight() const override;
  bool isDark() const override { return dark; }

  std::vector<Screen> screens{{{0, 0, 1440, 900}, {0, 0, 1440, 875}}};
  bool dark = false;
};

}  // namespace nimbletype
