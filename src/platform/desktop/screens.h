#pragma once
#include <vector>

#include "platform/desktop/geometry.h"

namespace nimbletype {

struct Screen {
  BottomLeftRect frame;
  BottomLeftRect visibleFrame;  // without menu bar, Dock or panels
  bool operator==(const Screen&) const = default;
};

class Screens {
 public:
  virtual ~Screens() = default;
  virtual std::vector<Screen> all() const = 0;
  // Height of the screen whose origin is zero: the one both coordinate spaces are measured from.
  virtual double mainHeight() const = 0;
  // The desktop's appearance.
  virtual bool isDark() const = 0;
  // Whether what an application draws at this place is dark, or right of it where it is a caret's; the
  // appearance where that cannot be seen.
  virtual bool isDarkAt(const BottomLeftRect&) const { return isDark(); }
};

}  // namespace nimbletype
