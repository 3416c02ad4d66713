#pragma once
#include "platform/desktop/screens.h"

namespace nimbletype {

// The port over Qt's screens, in logical pixels.
class QtScreens final : public Screens {
 public:
  std::vector<Screen> all() const override;
  double mainHeight() const override;
  bool isDark() const override;
  bool isDarkAt(const BottomLeftRect& rect) const override;
};

}  // namespace nimbletype
