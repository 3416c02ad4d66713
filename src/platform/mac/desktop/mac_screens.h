#pragma once
#include "platform/desktop/screens.h"

namespace nimbletype {

class MacScreens final : public Screens {
 public:
  std::vector<Screen> all() const override;
  double mainHeight() const override;
  bool isDark() const override;
};

}  // namespace nimbletype
