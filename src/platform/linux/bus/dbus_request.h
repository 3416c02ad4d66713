#pragma once
#include <functional>

#include "platform/linux/bus/dbus_batch.h"
#include "platform/system/task.h"

namespace nimbletype {

// Sends one call, which starts no service by itself; `answered` gets the reply's arguments later on the
// default main context, or none when there is no answer. Nothing comes once the task is destroyed.
[[nodiscard]] Task dbusRequest(GDBusConnection* connection, const DBusCall& call,
                               std::function<void(GVariant*)> answered);

// The session bus, whose end does not end this program as long as somebody holds it; none when there is none.
GObjectPtr<GDBusConnection> sessionBus();

// Follows who has a name on the session bus, on the default main context. The end of the bus is the end of
// the name, not of this program.
class DBusNameWatch {
 public:
  // Called first when it is known, and after each change; the connection is none while nobody has the name.
  using Changed = std::function<void(GDBusConnection*)>;
  DBusNameWatch(const char* name, Changed changed);
  ~DBusNameWatch();
  DBusNameWatch(const DBusNameWatch&) = delete;
  DBusNameWatch& operator=(const DBusNameWatch&) = delete;

 private:
  GObjectPtr<GDBusConnection> bus_;
  unsigned id_;
  Changed changed_;
};

// Hears the signals of one interface of whoever has a name, until the task is destroyed.
[[nodiscard]] Task dbusSignals(GDBusConnection* connection, const char* name, const char* interface,
                               std::function<void(const std::string& signal, GVariant* arguments)> heard);

}  // namespace nimbletype
