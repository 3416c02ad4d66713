#include "platform/mac/desktop/mac_workspace.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/mac/bridge/cf_ref.h"
#include "platform/mac/bridge/mac_observing.h"
#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/desktop/mac_application.h"

namespace nimbletype {
namespace {

// Ordinary windows lie on layer zero; menus, panels and the Dock lie above it. Titles come only with the
// permission to record the screen.
std::optional<ScreenWindow> windowFrom(NSDictionary* info) {
  const auto entry = [info](CFStringRef key) { return info[(__bridge NSString*)key]; };
  if ([entry(kCGWindowLayer) intValue] != 0) return std::nullopt;
  CGRect frame = CGRectZero;
  NSDictionary* bounds = entry(kCGWindowBounds);
  if (!bounds || !CGRectMakeWithDictionaryRepresentation((__bridge CFDictionaryRef)bounds, &frame))
    return std::nullopt;
  auto app = described(
      [NSRunningApplication runningApplicationWithProcessIdentifier:[entry(kCGWindowOwnerPID) intValue]]);
  if (!app) return std::nullopt;
  return ScreenWindow{
      [entry(kCGWindowNumber) unsignedIntValue], std::move(*app), utf8String(entry(kCGWindowName)), {
        frame.origin.x, frame.origin.y, frame.size.width, frame.size.height
      }};
}

}  // namespace

std::optional<RunningApp> MacWorkspace::frontmost() {
  return described(NSWorkspace.sharedWorkspace.frontmostApplication);
}

// The system lists them from the front to the back.
std::vector<ScreenWindow> MacWorkspace::windows() {
  std::vector<ScreenWindow> found;
  const auto list = CFRef<CFArrayRef>::adopt(CGWindowListCopyWindowInfo(
      kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements, kCGNullWindowID));
  for (NSDictionary* info in (__bridge NSArray*)list.get())
    if (auto window = windowFrom(info)) found.push_back(std::move(*window));
  return found;
}

void MacWorkspace::onFrontmostChanged(std::function<void()> changed) {
  registration_.cancel();
  if (!changed) return;
  registration_ = observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                                      NSWorkspaceDidActivateApplicationNotification,
                                      [changed = std::move(changed)](NSNotification*) { changed(); });
}

}  // namespace nimbletype
