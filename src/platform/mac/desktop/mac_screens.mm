#include "platform/mac/desktop/mac_screens.h"

#import <AppKit/AppKit.h>

#include "platform/mac/bridge/mac_appearance.h"

namespace nimbletype {
namespace {

BottomLeftRect rectFrom(NSRect r) {
  return {r.origin.x, r.origin.y, r.size.width, r.size.height};
}

}  // namespace

std::vector<Screen> MacScreens::all() const {
  std::vector<Screen> screens;
  for (NSScreen* screen in NSScreen.screens)
    screens.push_back({rectFrom(screen.frame), rectFrom(screen.visibleFrame)});
  return screens;
}

// The first screen is the one whose origin is zero.
double MacScreens::mainHeight() const {
  NSScreen* first = NSScreen.screens.firstObject;
  return first ? first.frame.size.height : 0;
}

bool MacScreens::isDark() const {
  return isAppearanceDark();
}

}  // namespace nimbletype
