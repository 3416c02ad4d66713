#include "platform/mac/desktop/mac_running_apps.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/mac/bridge/mac_observing.h"
#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/desktop/mac_application.h"

namespace nimbletype {

std::vector<RunningApp> MacRunningApps::all() {
  std::vector<RunningApp> apps;
  for (NSRunningApplication* app in NSWorkspace.sharedWorkspace.runningApplications)
    if (!app.terminated) apps.push_back(*described(app));
  return apps;
}

// The workspace's notifications of launches and ends leave out agents, which live in the menu bar alone.
void MacRunningApps::onChange(std::function<void()> changed) {
  registration_.cancel();
  if (!changed) return;
  registration_ = observeValue(NSWorkspace.sharedWorkspace, @"runningApplications", std::move(changed));
}

void MacRunningApps::quit(const RunningApp& app, Quit how) {
  NSRunningApplication* running =
      [NSRunningApplication runningApplicationWithProcessIdentifier:static_cast<pid_t>(app.processID)];
  if (!running || running.terminated || utf8String(running.bundleIdentifier) != app.bundleID) return;
  if (how == Quit::forced)
    [running forceTerminate];
  else
    [running terminate];
}

}  // namespace nimbletype
