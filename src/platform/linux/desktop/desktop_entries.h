#pragma once
#include <gio/gio.h>

#include <map>
#include <optional>
#include <string>

#include "platform/linux/bus/glib_handle.h"

namespace nimbletype {

// An installed application as its desktop file describes it.
struct DesktopEntry {
  std::string id;    // without ".desktop"
  std::string name;  // in the user's language
  bool isTerminal = false;
};

// What a window says about the application it belongs to; empty where it does not say.
struct WindowIdentity {
  std::string gtkApplicationID, instanceName, className, executable;
};

// The installed desktop files, looked through once and again after they changed.
class DesktopEntries {
 public:
  DesktopEntries();
  ~DesktopEntries();
  DesktopEntries(const DesktopEntries&) = delete;
  DesktopEntries& operator=(const DesktopEntries&) = delete;

  // Always an entry with an id when the window says anything at all, installed or not.
  DesktopEntry of(const WindowIdentity& window);

 private:
  using Index = std::map<std::string, DesktopEntry>;  // by lower-case key
  void load();
  std::optional<DesktopEntry> find(const Index& index, const std::string& key) const;

  GObjectPtr<GAppInfoMonitor> monitor_;
  bool loaded_ = false;
  Index byID_, byWindowClass_, byShortName_;
};

}  // namespace nimbletype
