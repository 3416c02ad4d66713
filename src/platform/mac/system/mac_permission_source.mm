#include "platform/mac/system/mac_permission_source.h"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>

#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {

bool MacPermissionSource::isTrusted() const {
  return AXIsProcessTrusted();
}

void MacPermissionSource::askForTrust() {
  NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
  AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
}

void MacPermissionSource::onTrustChange(std::function<void()> changed) {
  NSDistributedNotificationCenter* center = NSDistributedNotificationCenter.defaultCenter;
  if (registration_) [center removeObserver:registration_];
  registration_ = nil;
  if (!changed) return;
  registration_ = [center addObserverForName:@"com.apple.accessibility.api"
                                      object:nil
                                       queue:NSOperationQueue.mainQueue
                                  usingBlock:^(NSNotification*) {
                                    changed();
                                  }];
}

bool MacPermissionSource::canRecordScreen() const {
  return CGPreflightScreenCaptureAccess();
}

bool MacPermissionSource::askForScreenRecording() {
  return CGRequestScreenCaptureAccess();
}

void MacPermissionSource::openSettings(std::string_view address) {
  NSURL* url = [NSURL URLWithString:nsString(address)];
  if (url) [NSWorkspace.sharedWorkspace openURL:url];
}

}  // namespace nimbletype
