#include "platform/linux/accessibility/tree/atspi_bus.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "platform/linux/bus/dbus_request.h"

namespace nimbletype {
namespace {

constexpr int startupTimeout = 5000;  // ms; the bus may have to be launched first
constexpr std::array events{"object:state-changed:focused",  "object:text-changed", "object:text-caret-moved",
                            "object:text-selection-changed", "window:activate",     "window:deactivate"};

VariantPtr callNow(GDBusConnection* connection, const DBusCall& call, int timeout) {
  return VariantPtr(g_dbus_connection_call_sync(connection, call.destination.c_str(), call.path.c_str(),
                                                call.interface.c_str(), call.method.c_str(), call.arguments,
                                                nullptr, G_DBUS_CALL_FLAGS_NONE, timeout, nullptr, nullptr));
}

// Applications build their trees only once somebody asks for them.
void turnOn(GDBusConnection* session) {
  callNow(session,
          {"org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
           g_variant_new("(ssv)", "org.a11y.Status", "IsEnabled", g_variant_new_boolean(TRUE))},
          startupTimeout);
}

GObjectPtr<GDBusConnection> connectToBus() {
  const auto session = sessionBus();
  if (!session) return nullptr;
  turnOn(session.get());
  const VariantPtr reply =
      callNow(session.get(), {"org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", nullptr},
              startupTimeout);
  const VariantPtr address = childOf(reply.get(), 0);
  if (!address) return nullptr;
  GObjectPtr<GDBusConnection> bus(g_dbus_connection_new_for_address_sync(
      stringOf(address.get()).c_str(),
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
      nullptr, nullptr, nullptr));
  if (bus) g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
  return bus;
}

std::string lowercase(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
  return s;
}

// LibreOffice in GTK windows counts UTF-16 units all the same.
AtspiToolkit toolkitOf(const std::string& toolkit, const std::string& application) {
  const std::string name = lowercase(toolkit);
  if (name == "gtk" && lowercase(application) == "soffice") return {.insertsBytes = true, .isOffice = true};
  if (name == "gtk" || name == "chromium" || name == "webkitgtk")
    return {.unit = OffsetUnit::codePoint,
            .insertsBytes = true,
            .isGtk = name == "gtk",
            .hasPages = name == "chromium"};
  return {.isQt = name.empty() || name.starts_with("qt")};
}

}  // namespace

AtspiBus::AtspiBus() : connection_(connectToBus()) {
  if (connection_)
    for (const char* event : events) listenTo(event);
}

AtspiBus::~AtspiBus() {
  if (connection_) g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

bool AtspiBus::isOpen() const {
  return connection_ && !g_dbus_connection_is_closed(connection_.get());
}

void AtspiBus::listenTo(const char* event) {
  callNow(connection_.get(),
          {"org.a11y.atspi.Registry", "/org/a11y/atspi/registry", "org.a11y.atspi.Registry", "RegisterEvent",
           g_variant_new("(s)", event)},
          startupTimeout);
}

std::optional<std::int64_t> AtspiBus::processOf(const std::string& busName) {
  if (const auto known = processes_.find(busName); known != processes_.end()) return known->second;
  DBusBatch batch(connection_.get(), Deadline::in(Accessibility::messagingTimeout));
  const auto id = batch.call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                              "GetConnectionUnixProcessID", g_variant_new("(s)", busName.c_str())});
  batch.wait();
  if (batch.timedOut()) return std::nullopt;
  const VariantPtr number = childOf(batch.reply(id), 0);
  std::optional<std::int64_t> process;
  if (number) process = g_variant_get_uint32(number.get());
  processes_[busName] = process;  // names are never given twice
  return process;
}

std::vector<std::string> AtspiBus::applications(Deadline deadline) const {
  DBusBatch batch(connection_.get(), deadline);
  const auto id = batch.call({"org.a11y.atspi.Registry", AtspiObject::rootPath, "org.a11y.atspi.Accessible",
                              "GetChildren", nullptr});
  batch.wait();
  std::vector<std::string> names;
  const VariantPtr list = childOf(batch.reply(id), 0);
  for (gsize i = 0; list && i < g_variant_n_children(list.get()); ++i) {
    const VariantPtr child = childOf(list.get(), i);
    names.push_back(stringOf(childOf(child.get(), 0).get()));
  }
  return names;
}

std::optional<std::string> AtspiBus::applicationOf(std::int64_t processID, Deadline deadline) {
  if (!isOpen()) return std::nullopt;
  std::optional<std::string> found;
  for (const auto& name : applications(deadline))
    if (processOf(name) == processID) found = name;  // the latest connection of a process is the living one
  return found;
}

AtspiToolkit AtspiBus::toolkit(const std::string& busName, Deadline deadline) {
  if (const auto known = toolkits_.find(busName); known != toolkits_.end()) return known->second;
  DBusBatch batch(connection_.get(), deadline);
  const auto toolkit =
      batch.property(busName, AtspiObject::rootPath, "org.a11y.atspi.Application", "ToolkitName");
  const auto name = batch.property(busName, AtspiObject::rootPath, "org.a11y.atspi.Accessible", "Name");
  batch.wait();
  const AtspiToolkit found = toolkitOf(stringOf(batch.reply(toolkit)), stringOf(batch.reply(name)));
  if (batch.reply(toolkit)) toolkits_[busName] = found;
  return found;
}

}  // namespace nimbletype
