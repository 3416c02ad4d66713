#pragma once
#include <functional>

#include "platform/linux/accessibility/tree/atspi_object.h"
#include "platform/linux/bus/glib_handle.h"

namespace nimbletype {

// Browsers lay a page out for Accessibility a while after they were first asked, and tell nobody: until then
// no character has a box. Tells when it is worth looking again, a few times for each text.
class AtspiLateLayout {
 public:
  using LookAgain = std::function<void(const AtspiRef& text)>;
  explicit AtspiLateLayout(LookAgain lookAgain) : lookAgain_(std::move(lookAgain)) {}
  ~AtspiLateLayout() { cancel(); }
  AtspiLateLayout(const AtspiLateLayout&) = delete;
  AtspiLateLayout& operator=(const AtspiLateLayout&) = delete;

  // What came of a question for boxes.
  void answered(const AtspiRef& text, bool withBoxes);

 private:
  void cancel();

  LookAgain lookAgain_;
  AtspiRef text_;
  int looks_ = 0;
  guint timer_ = 0;
};

}  // namespace nimbletype
