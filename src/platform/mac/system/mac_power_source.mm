#include "platform/mac/system/mac_power_source.h"

#import <IOKit/ps/IOPSKeys.h>
#import <IOKit/ps/IOPowerSources.h>

namespace nimbletype {
namespace {

void powerChanged(void* changed) {
  // The listener may be replaced by what it does.
  const auto call = *static_cast<const std::function<void()>*>(changed);
  call();
}

}  // namespace

bool MacPowerSource::onBattery() const {
  const auto info = CFRef<CFTypeRef>::adopt(IOPSCopyPowerSourcesInfo());
  const CFStringRef type = info ? IOPSGetProvidingPowerSourceType(info.get()) : nullptr;
  return type && CFEqual(type, CFSTR(kIOPSBatteryPowerValue));
}

void MacPowerSource::onChange(std::function<void()> changed) {
  source_.reset();
  changed_ = std::move(changed);
  if (!changed_) return;
  source_.emplace(
      CFRef<CFRunLoopSourceRef>::adopt(IOPSNotificationCreateRunLoopSource(powerChanged, &changed_)));
}

}  // namespace nimbletype
