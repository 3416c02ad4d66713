#import <AppKit/AppKit.h>

#include "health.h"
#include "platform/mac/accessibility/mac_accessibility.h"
#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/keys/mac_event_poster.h"
#include "platform/mac/keys/mac_secure_input.h"
#include "platform/mac/system/mac_power_source.h"

namespace nimbletype::cli {
namespace {

// The system asks about the application that a command runs in, here the terminal; Nimbletype itself is asked
// about separately and in the same place.
constexpr const char* advice = "Allow it in System Settings, Privacy & Security, Accessibility: the terminal "
                               "for this check, Nimbletype for use.";

Finding accessibilityFinding() {
  if (MacAccessibility().isTrusted()) return {"Accessibility", "allowed", "", true, true};
  return {"Accessibility", "not allowed from here", advice, false, true};
}

Finding postingFinding() {
  if (MacEventPoster().mayPost()) return {"Typing", "allowed", "", true, true};
  return {"Typing", "not allowed from here", advice, false, true};
}

Finding secureInputFinding() {
  if (!MacSecureInput().isOn()) return {"Secure input", "off", "", true, false};
  return {"Secure input", "on, so no application can read what is typed",
          "Close the password prompt, or the application that keeps it on.", false, false};
}

Finding spellFinding() {
  NSString* language = NSSpellChecker.sharedSpellChecker.language;
  if (language.length > 0) return {"Spell checker", utf8String(language), "", true, false};
  return {"Spell checker", "no language", "Choose one in System Settings, Keyboard, for spelling fixes.",
          false, false};
}

Finding powerFinding() {
  return {"Power", MacPowerSource().onBattery() ? "on battery" : "plugged in", "", true, false};
}

}  // namespace

std::vector<Finding> desktopFindings() {
  @autoreleasepool {
    return {accessibilityFinding(), postingFinding(), secureInputFinding(), spellFinding(), powerFinding()};
  }
}

}  // namespace nimbletype::cli
