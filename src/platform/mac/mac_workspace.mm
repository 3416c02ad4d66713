#include "platform/mac/mac_workspace.h"

#include "platform/mac/mac_text.h"

namespace nimbletype {

std::optional<RunningApp> MacWorkspace::frontmost() {
  NSRunningApplication* app = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (!app) return std::nullopt;
  return RunningApp{.processID = app.processIdentifier,
                    .bundleID = utf8String(app.bundleIdentifier),
                    .appName = utf8String(app.localizedName),
                    .bundlePath = utf8String(app.bundleURL.path),
                    .isOurs = [app isEqual:NSRunningApplication.currentApplication] != NO};
}

void MacWorkspace::onFrontmostChanged(std::function<void()> changed) {
  NSNotificationCenter* center = NSWorkspace.sharedWorkspace.notificationCenter;
  if (registration_) [center removeObserver:registration_];
  registration_ = nil;
  if (!changed) return;
  registration_ = [center addObserverForName:NSWorkspaceDidActivateApplicationNotification
                                      object:nil
                                       queue:nil
                                  usingBlock:^(NSNotification*) {
                                    changed();
                                  }];
}

}  // namespace nimbletype
