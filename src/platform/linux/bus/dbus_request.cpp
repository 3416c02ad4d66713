#include "platform/linux/bus/dbus_request.h"

#include <utility>

namespace nimbletype {
namespace {

constexpr int patienceMs = 10'000;

struct Request {
  GObjectPtr<GCancellable> cancellable;
  std::function<void(GVariant*)> answered;
};

void finish(GObject* connection, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Request> request(static_cast<Request*>(data));
  const VariantPtr reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
  if (!g_cancellable_is_cancelled(request->cancellable.get())) request->answered(reply.get());
}

using Heard = std::function<void(const std::string&, GVariant*)>;

}  // namespace

Task dbusRequest(GDBusConnection* connection, const DBusCall& call, std::function<void(GVariant*)> answered) {
  const std::shared_ptr<GCancellable> cancellable(g_cancellable_new(), g_object_unref);
  auto* request = new Request{GObjectPtr<GCancellable>(g_object_ref(cancellable.get())), std::move(answered)};
  g_dbus_connection_call(connection, call.destination.c_str(), call.path.c_str(), call.interface.c_str(),
                         call.method.c_str(), call.arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                         patienceMs, cancellable.get(), finish, request);
  return Task([cancellable] { g_cancellable_cancel(cancellable.get()); });
}

GObjectPtr<GDBusConnection> sessionBus() {
  GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (bus) g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
  return bus;
}

DBusNameWatch::DBusNameWatch(const char* name, Changed changed)
    : bus_(sessionBus()), changed_(std::move(changed)) {
  const auto appeared = +[](GDBusConnection* connection, const gchar*, const gchar*, gpointer self) {
    static_cast<DBusNameWatch*>(self)->changed_(connection);
  };
  const auto vanished = +[](GDBusConnection*, const gchar*, gpointer self) {
    static_cast<DBusNameWatch*>(self)->changed_(nullptr);
  };
  id_ = g_bus_watch_name(G_BUS_TYPE_SESSION, name, G_BUS_NAME_WATCHER_FLAGS_NONE, appeared, vanished, this,
                         nullptr);
}

DBusNameWatch::~DBusNameWatch() {
  g_bus_unwatch_name(id_);
}

Task dbusSignals(GDBusConnection* connection, const char* name, const char* interface, Heard heard) {
  const auto tell = +[](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* signal,
                        GVariant* arguments, gpointer data) {
    const auto listener = *static_cast<Heard*>(data);
    listener(signal, arguments);
  };
  const guint id = g_dbus_connection_signal_subscribe(
      connection, name, interface, nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE, tell,
      new Heard(std::move(heard)), [](gpointer data) { delete static_cast<Heard*>(data); });
  const std::shared_ptr<GDBusConnection> held(g_object_ref(connection), g_object_unref);
  return Task([held, id] { g_dbus_connection_signal_unsubscribe(held.get(), id); });
}

}  // namespace nimbletype
