#include "platform/mac/system/mac_system_settings.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/mac/bridge/mac_appearance.h"
#include "platform/mac/bridge/mac_observing.h"

namespace nimbletype {
namespace {

NSString* const predictionsKey = @"NSAutomaticInlinePredictionEnabled";

}  // namespace

// Where the user has never chosen, the system knows its default.
std::optional<bool> MacSystemSettings::predictionsOn() const {
  NSDictionary* global = [NSUserDefaults.standardUserDefaults persistentDomainForName:NSGlobalDomain];
  NSNumber* chosen = global[predictionsKey];
  if ([chosen isKindOfClass:NSNumber.class]) return chosen.boolValue != NO;
  return NSSpellChecker.automaticInlinePredictionEnabled != NO;
}

bool MacSystemSettings::switchPredictionsOff() {
  CFPreferencesSetValue((__bridge CFStringRef)predictionsKey, kCFBooleanFalse, kCFPreferencesAnyApplication,
                        kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
  return CFPreferencesSynchronize(kCFPreferencesAnyApplication, kCFPreferencesCurrentUser,
                                  kCFPreferencesAnyHost);
}

bool MacSystemSettings::reducesMotion() const {
  return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
}

std::optional<bool> MacSystemSettings::prefersDark() const {
  return isAppearanceDark();
}

void MacSystemSettings::onChange(std::function<void()> changed) {
  displayOptions_.cancel();
  appearance_.cancel();
  if (!changed) return;
  displayOptions_ = observeNotification(NSWorkspace.sharedWorkspace.notificationCenter,
                                        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification,
                                        [changed](NSNotification*) { changed(); });
  appearance_ = observeValue(NSApp, @"effectiveAppearance", std::move(changed));
}

}  // namespace nimbletype
