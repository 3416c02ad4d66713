#pragma once
#include <cstdint>
#include <optional>

#include "platform/linux/accessibility/tree/atspi_focus.h"

namespace nimbletype {

// By how far the places that an application tells are wrong. What LibreOffice draws itself it places as if it
// began at its window's corner, where its menu bar is; the panel that holds it stands in the right place.
class AtspiContentShift {
 public:
  AtspiContentShift(AtspiBus& bus, AtspiFocus& focus) : bus_(bus), focus_(focus) {}

  // What has to be added to the places told of this element, in pixels.
  struct Shift {
    double x = 0, y = 0;
  };
  Shift of(const AtspiRef& element, Deadline deadline);

 private:
  // What the application draws, and what it is drawn in.
  struct Content {
    AtspiRef pane, holder;
  };
  Content contentOf(const AtspiRef& window, Deadline deadline) const;
  std::optional<Shift> measure(Deadline deadline) const;

  AtspiBus& bus_;
  AtspiFocus& focus_;
  AtspiRef window_;  // the content is that of this one
  Content content_;
  Shift shift_;
  std::int64_t measureAgain_ = 0;  // µs of the monotonic clock
};

}  // namespace nimbletype
