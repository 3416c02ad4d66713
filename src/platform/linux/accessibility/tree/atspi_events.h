#pragma once
#include <functional>
#include <vector>

#include "platform/linux/accessibility/tree/atspi_bus.h"

namespace nimbletype {

struct AtspiEvent {
  enum class Kind {
    focused,
    unfocused,
    textChanged,
    caretMoved,
    selectionChanged,
    windowActivated,
    windowDeactivated
  };
  Kind kind;
  AtspiRef source;
};

// Hands on the few events of the accessibility bus that are of use, in the order they were sent, on the main
// loop.
class AtspiEvents {
 public:
  using Handler = std::function<void(const AtspiEvent&)>;
  AtspiEvents(AtspiBus& bus, Handler handler);
  ~AtspiEvents();
  AtspiEvents(const AtspiEvents&) = delete;
  AtspiEvents& operator=(const AtspiEvents&) = delete;

 private:
  void subscribe(const char* interface, const char* member, const char* detail);
  static void arrived(GDBusConnection*, const gchar* sender, const gchar* path, const gchar* interface,
                      const gchar* member, GVariant* arguments, gpointer self);

  AtspiBus& bus_;
  Handler handler_;
  std::vector<guint> subscriptions_;
};

}  // namespace nimbletype
