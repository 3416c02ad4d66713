#pragma once
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/bus/dbus_request.h"

namespace nimbletype {

// The tray that takes status items over the session bus. Needs a GLib main loop on the default context.
class NotifierHost {
 public:
  explicit NotifierHost(std::function<void()> changed);
  NotifierHost(const NotifierHost&) = delete;
  NotifierHost& operator=(const NotifierHost&) = delete;

  // Whether the bus has said yet if there is one.
  bool isKnown() const { return isKnown_; }
  bool isThere() const { return isThere_; }
  // It shows an item of this process.
  bool hasOurs() const;
  // What it shows of ours by now is about to go: only a later item counts.
  void forgetOurs();

 private:
  void follow(GDBusConnection* connection);
  void ask();
  void take(GVariant* properties);
  void askOwner(const std::string& item);

  std::function<void()> changed_;
  bool isKnown_ = false, isThere_ = false;
  std::vector<std::string> items_;
  std::map<std::string, std::optional<bool>> isOurs_;  // by item; none while it is being asked
  GObjectPtr<GDBusConnection> connection_;
  Task signals_, question_;
  std::map<std::string, Task> questions_;
  DBusNameWatch watch_;
};

}  // namespace nimbletype
