#include "platform/mac/bridge/mac_appearance.h"

#import <AppKit/AppKit.h>

namespace nimbletype {

bool isAppearanceDark() {
  NSAppearanceName best = [NSApp.effectiveAppearance
      bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
  return [best isEqualToString:NSAppearanceNameDarkAqua];
}

}  // namespace nimbletype
