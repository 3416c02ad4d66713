#pragma once
#include "platform/linux/accessibility/tree/atspi_focus.h"
#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

// The ratio of two lengths where it is one that applications are scaled by, in quarters from 1.25 up; 1 for
// any other: what a window manager draws around a window is counted by some applications and not by others.
double applicationScale(double pixels, double told);

// How many pixels of the screen there are for one of an application that draws itself larger. Such
// applications tell places and sizes in their own.
class AtspiScale {
 public:
  AtspiScale(AtspiBus& bus, AtspiFocus& focus)
      : bus_(bus), focus_(focus), connection_(connectToDisplay({})) {}

  double of(const AtspiRef& element, Deadline deadline);

 private:
  std::optional<double> activeWindowWidth(std::int64_t process) const;
  std::optional<double> toldWidth(const AtspiRef& window, Deadline deadline) const;

  AtspiBus& bus_;
  AtspiFocus& focus_;
  XcbConnection connection_;
  AtspiRef window_;  // the scale is that of this one
  double scale_ = 1;
  std::int64_t measureAgain_ = 0;  // µs of the monotonic clock
};

}  // namespace nimbletype
