#include "platform/mac/mac_power_source.h"

#import <IOKit/ps/IOPSKeys.h>
#import <IOKit/ps/IOPowerSources.h>

#include "platform/mac/cf_ref.h"

namespace nimbletype {

bool MacPowerSource::onBattery() const {
  const auto info = CFRef<CFTypeRef>::adopt(IOPSCopyPowerSourcesInfo());
  const CFStringRef type = info ? IOPSGetProvidingPowerSourceType(info.get()) : nullptr;
  return type && CFEqual(type, CFSTR(kIOPSBatteryPowerValue));
}

}  // namespace nimbletype
