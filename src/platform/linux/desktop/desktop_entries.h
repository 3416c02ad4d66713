#pragma once
#include <gio/gdesktopappinfo.h>

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
  std::string icon{};  // a name that the theme has a picture for, or a file; may be empty
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
  // The installed application that is started by a program of this name. None for programs that run inside a
  // terminal: they are that terminal's.
  std::optional<DesktopEntry> startedBy(const std::string& program);

 private:
  using Index = std::map<std::string, DesktopEntry>;  // by lower-case key
  void load();
  void addPrograms(GDesktopAppInfo* info, const DesktopEntry& entry);
  std::optional<DesktopEntry> find(const Index& index, const std::string& key) const;

  GObjectPtr<GAppInfoMonitor> monitor_;
  bool loaded_ = false;
  Index byID_, byWindowClass_, byShortName_;
  Index byProgram_;  // by the name as it is
};

}  // namespace nimbletype
