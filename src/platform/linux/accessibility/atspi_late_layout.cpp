#include "platform/linux/accessibility/atspi_late_layout.h"

#include <utility>

namespace nimbletype {
namespace {

constexpr int mostLooks = 10;
constexpr guint pause = 300;  // ms

}  // namespace

void AtspiLateLayout::answered(const AtspiRef& text, bool withBoxes) {
  if (withBoxes || !sameObject(text_, text)) {
    cancel();
    looks_ = 0;
    text_ = text;
  }
  if (withBoxes || timer_ != 0 || looks_ == mostLooks) return;
  ++looks_;
  const auto look = [](gpointer data) -> gboolean {
    auto* self = static_cast<AtspiLateLayout*>(data);
    self->timer_ = 0;
    self->lookAgain_(AtspiRef(self->text_));
    return G_SOURCE_REMOVE;
  };
  timer_ = g_timeout_add(pause, look, this);
}

void AtspiLateLayout::cancel() {
  if (timer_ != 0) g_source_remove(std::exchange(timer_, 0));
}

}  // namespace nimbletype
