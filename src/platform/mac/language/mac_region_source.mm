#include "platform/mac/language/mac_region_source.h"

#import <Foundation/Foundation.h>

#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {

Region MacRegionSource::region() const {
  @autoreleasepool {
    // The process remembers the zone it started in.
    [NSTimeZone resetSystemTimeZone];
    return {utf8String(NSLocale.autoupdatingCurrentLocale.localeIdentifier),
            utf8String(NSTimeZone.systemTimeZone.name)};
  }
}

}  // namespace nimbletype
