#include "platform/mac/mac_workspace.h"

#include "platform/mac/mac_text.h"

namespace nimbletype {

std::optional<RunningApp> MacWorkspace::frontmost() {
  NSRunningApplication* app = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (!app) return std::nullopt;
  return RunningApp{app.processIdentifier, utf8String(app.bundleIdentifier), utf8String(app.localizedName),
                    utf8String(app.bundleURL.path)};
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
