#include "tools/stage/private_bus.h"

#include <gio/gio.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "platform/linux/bus/glib_handle.h"

namespace nimbletype {
namespace {

constexpr const char* service = "org.freedesktop.secrets";
constexpr const char* collection = "/org/freedesktop/secrets/collection/login";

class RunningBus {
 public:
  RunningBus() {
    const std::string socket = folder_.path / "bus", config = folder_.path / "bus.conf";
    std::ofstream(config) << "<busconfig><type>session</type><listen>unix:path=" << socket
                          << "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                             "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>";
    daemon_ = std::make_unique<DesktopProgram>(
        std::vector<std::string>{"dbus-daemon", "--nofork", "--config-file=" + config});
    setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + socket).c_str(), 1);
    // The socket is there a moment before anybody listens at it.
    comesTrue([&] {
      if (std::filesystem::exists(socket))
        connection_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
      return connection_ != nullptr;
    });
    // The bus ends before this program does.
    if (connection_) g_dbus_connection_set_exit_on_close(connection_.get(), FALSE);
  }
  VariantPtr call(const char* name, const char* path, const char* interface, const char* method,
                  GVariant* arguments) {
    return VariantPtr(g_dbus_connection_call_sync(connection_.get(), name, path, interface, method, arguments,
                                                  nullptr, G_DBUS_CALL_FLAGS_NONE, 10'000, nullptr, nullptr));
  }
  bool isUp() const { return connection_ != nullptr; }

 private:
  TemporaryFolder folder_;
  std::unique_ptr<DesktopProgram> daemon_;
  GObjectPtr<GDBusConnection> connection_;
};

RunningBus& bus() {
  static RunningBus running;
  return running;
}

}  // namespace

bool PrivateBus::start() {
  return bus().isUp();
}

bool PrivateBus::hasOwner(const char* name) {
  const auto reply = bus().call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                "NameHasOwner", g_variant_new("(s)", name));
  const auto has = childOf(reply.get(), 0);
  return has && g_variant_get_boolean(has.get());
}

PrivateKeyring::PrivateKeyring() {
  if (!PrivateBus::start()) return;
  for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
    setenv(name, folder_.path.c_str(), 1);
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "GNOME_KEYRING_CONTROL"}) unsetenv(name);
  daemon_ = std::make_unique<DesktopProgram>(std::vector<std::string>{
      "bash", "-c",
      "exec gnome-keyring-daemon --foreground --unlock --components=secrets < <(printf password)"});
  comesTrue([] { return PrivateBus::hasOwner(service); });
}

void PrivateKeyring::lock() {
  bus().call(service, "/org/freedesktop/secrets", "org.freedesktop.Secret.Service", "Lock",
             g_variant_new_parsed("([%o],)", collection));
}

// As if the user had given the password.
void PrivateKeyring::unlock() {
  const char* path = "/org/freedesktop/secrets";
  const auto opened = bus().call(service, path, "org.freedesktop.Secret.Service", "OpenSession",
                                 g_variant_new_parsed("('plain', <''>)"));
  const auto session = childOf(opened.get(), 1);
  bus().call(service, path, "org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface",
             "UnlockWithMasterPassword",
             g_variant_new_parsed("(%o, (%o, @ay [], %@ay, 'text/plain'))", collection,
                                  g_variant_get_string(session.get(), nullptr),
                                  g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, "password", 8, 1)));
}

void PrivateKeyring::stop() {
  daemon_.reset();
  comesTrue([] { return !PrivateBus::hasOwner(service); });
}

}  // namespace nimbletype
