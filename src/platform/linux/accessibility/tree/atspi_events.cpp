#include "platform/linux/accessibility/tree/atspi_events.h"

#include <optional>
#include <string_view>

namespace nimbletype {
namespace {

constexpr const char* objectEvents = "org.a11y.atspi.Event.Object";
constexpr const char* windowEvents = "org.a11y.atspi.Event.Window";

// Toolkits disagree on what follows the first three arguments, so only those are looked at.
std::optional<AtspiEvent::Kind> kindOf(std::string_view member, GVariant* arguments) {
  using Kind = AtspiEvent::Kind;
  if (member == "TextChanged") return Kind::textChanged;
  if (member == "TextCaretMoved") return Kind::caretMoved;
  if (member == "TextSelectionChanged") return Kind::selectionChanged;
  if (member == "Activate") return Kind::windowActivated;
  if (member == "Deactivate") return Kind::windowDeactivated;
  const VariantPtr detail = childOf(arguments, 1);
  if (member != "StateChanged" || !detail || !g_variant_is_of_type(detail.get(), G_VARIANT_TYPE_INT32))
    return std::nullopt;
  return g_variant_get_int32(detail.get()) != 0 ? Kind::focused : Kind::unfocused;
}

}  // namespace

AtspiEvents::AtspiEvents(AtspiBus& bus, Handler handler) : bus_(bus), handler_(std::move(handler)) {
  if (!bus_.isOpen()) return;
  subscribe(objectEvents, "StateChanged", "focused");
  for (const char* member : {"TextChanged", "TextCaretMoved", "TextSelectionChanged"})
    subscribe(objectEvents, member, nullptr);
  for (const char* member : {"Activate", "Deactivate"}) subscribe(windowEvents, member, nullptr);
}

AtspiEvents::~AtspiEvents() {
  for (const guint id : subscriptions_) g_dbus_connection_signal_unsubscribe(bus_.connection(), id);
}

void AtspiEvents::subscribe(const char* interface, const char* member, const char* detail) {
  subscriptions_.push_back(g_dbus_connection_signal_subscribe(bus_.connection(), nullptr, interface, member,
                                                              nullptr, detail, G_DBUS_SIGNAL_FLAGS_NONE,
                                                              arrived, this, nullptr));
}

void AtspiEvents::arrived(GDBusConnection*, const gchar* sender, const gchar* path, const gchar*,
                          const gchar* member, GVariant* arguments, gpointer self) {
  auto* events = static_cast<AtspiEvents*>(self);
  if (const auto kind = kindOf(member, arguments))
    events->handler_({*kind, std::make_shared<AtspiObject>(sender, path)});
}

}  // namespace nimbletype
