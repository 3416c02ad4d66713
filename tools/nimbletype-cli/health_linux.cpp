#include <gio/gio.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <cstdlib>
#include <memory>

#include "health.h"
#include "platform/linux/keys/relay_process.h"
#include "platform/linux/language/hunspell_dictionary.h"

namespace nimbletype::cli {
namespace {

struct Free {
  void operator()(GDBusConnection* bus) const { g_object_unref(bus); }
  void operator()(xcb_connection_t* display) const { xcb_disconnect(display); }
};
using Bus = std::unique_ptr<GDBusConnection, Free>;
using Display = std::unique_ptr<xcb_connection_t, Free>;

Bus bus(GBusType type) {
  return Bus(g_bus_get_sync(type, nullptr, nullptr));
}

// One call without arguments to the bus or a service; the string it answers, or none.
std::string ask(GDBusConnection* connection, const char* name, const char* path, const char* interface,
                const char* method) {
  if (!connection) return {};
  GVariant* answer =
      g_dbus_connection_call_sync(connection, name, path, interface, method, nullptr, G_VARIANT_TYPE("(s)"),
                                  G_DBUS_CALL_FLAGS_NONE, 2000, nullptr, nullptr);
  if (!answer) return {};
  const gchar* text = nullptr;
  g_variant_get(answer, "(&s)", &text);
  std::string result(text);
  g_variant_unref(answer);
  return result;
}

// Whether a service runs or would be started when asked for.
bool hasService(GDBusConnection* connection, const char* name) {
  if (!connection) return false;
  for (const char* method : {"ListNames", "ListActivatableNames"}) {
    GVariant* answer = g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, nullptr,
        G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, 2000, nullptr, nullptr);
    if (!answer) continue;
    GVariant* names = g_variant_get_child_value(answer, 0);
    const gchar** list = g_variant_get_strv(names, nullptr);
    const bool found = g_strv_contains(list, name);
    g_free(list);
    g_variant_unref(names);
    g_variant_unref(answer);
    if (found) return true;
  }
  return false;
}

Finding accessibilityFinding() {
  const Bus session = bus(G_BUS_TYPE_SESSION);
  const std::string address =
      ask(session.get(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress");
  if (!address.empty()) return {"Accessibility bus", "reachable", "", true, true};
  return {"Accessibility bus", session ? "not on the session bus" : "no session bus",
          session ? "Install at-spi2-core, then log in again."
                  : "Start from within a desktop session, or with dbus-run-session.",
          false, true};
}

bool isUsable(const Display& display) {
  return display && xcb_connection_has_error(display.get()) == 0;
}

Finding displayFinding(const Display& display) {
  const char* name = std::getenv("DISPLAY");
  if (isUsable(display)) return {"Display", std::string("X11, ") + name, "", true, true};
  return {"Display", name ? std::string("cannot open ") + name : "none", "Start from within an X11 session.",
          false, true};
}

bool hasExtension(const Display& display, xcb_extension_t* extension) {
  const xcb_query_extension_reply_t* reply = xcb_get_extension_data(display.get(), extension);
  return reply && reply->present;
}

Finding tapFinding(const Display& display) {
  Finding finding{"Keyboard tap", "", "", false, true};
  if (!isUsable(display))
    finding.state = "needs a display";
  else if (!hasExtension(display, &xcb_input_id) || !hasExtension(display, &xcb_test_id)) {
    finding.state = "the X server lacks XInput 2 or XTEST";
    finding.advice = "Use an X server with both extensions; Xorg has them.";
  } else if (const std::string relay = installedKeyRelay();
             !g_file_test(relay.c_str(), G_FILE_TEST_IS_EXECUTABLE)) {
    finding.state = "its helper program is missing: " + relay;
    finding.advice = "Install Nimbletype again, or build the target nimbletype-keys.";
  } else {
    finding.state = "keys can be taken and typed";
    finding.works = true;
  }
  return finding;
}

Finding secretFinding() {
  const Bus session = bus(G_BUS_TYPE_SESSION);
  if (hasService(session.get(), "org.freedesktop.secrets"))
    return {"Secret store", "available", "", true, false};
  return {"Secret store", "no Secret Service",
          "Install gnome-keyring to keep keys of servers and the writing memory.", false, false};
}

Finding spellFinding() {
  const char* locale = std::getenv("LANG");
  if (const auto path = findDictionary(localeLanguage(locale ? locale : "")))
    return {"Spell checker", "Hunspell, " + *path, "", true, false};
  return {"Spell checker", "no Hunspell dictionary",
          "Install one, such as hunspell-en-us, for spelling fixes.", false, false};
}

Finding powerFinding() {
  const Bus system = bus(G_BUS_TYPE_SYSTEM);
  if (hasService(system.get(), "org.freedesktop.UPower")) return {"Power", "UPower", "", true, false};
  return {"Power", "no UPower, counts as plugged in", "Install upower if this machine has a battery.", false,
          false};
}

}  // namespace

std::vector<Finding> desktopFindings() {
  const Display display(xcb_connect(nullptr, nullptr));
  return {accessibilityFinding(), displayFinding(display), tapFinding(display),
          secretFinding(),        spellFinding(),          powerFinding()};
}

}  // namespace nimbletype::cli
