#include "platform/mac/desktop/mac_status_bar.h"

#import <dispatch/dispatch.h>

#include <utility>

#include "platform/mac/bridge/mac_observing.h"
#include "platform/mac/bridge/mac_text.h"

@interface NimbletypeStatusItemTarget : NSObject
@property(nonatomic) std::function<void()> clicked;
- (void)click:(id)sender;
@end

@implementation NimbletypeStatusItemTarget
// The button takes its highlight back when it has sent its action.
- (void)click:(id)__unused sender {
  dispatch_async(dispatch_get_main_queue(), ^{
    const auto call = self.clicked;
    if (call) call();
  });
}
@end

namespace nimbletype {
namespace {

// The system tells in no other way which of the application's windows carries the item.
bool isStatusBarWindow(id window) {
  return [NSStringFromClass([window class]) isEqualToString:@"NSStatusBarWindow"];
}

bool isInSight(NSWindow* window) {
  const NSRect frame = window.frame;
  const NSPoint centre = NSMakePoint(NSMidX(frame), NSMidY(frame));
  if (frame.size.width <= 0) return false;
  for (NSScreen* screen in NSScreen.screens)
    if (NSPointInRect(centre, screen.frame)) return true;
  return false;
}

// Bars of other screens may have windows of their own: the button's comes first, then one that can be seen.
NSWindow* windowCarrying(NSStatusItem* item) {
  NSWindow* carrying = item.button.window;
  if (!isStatusBarWindow(carrying)) carrying = nil;
  if (carrying && isInSight(carrying)) return carrying;
  for (NSWindow* window in NSApp.windows) {
    if (!isStatusBarWindow(window)) continue;
    if (isInSight(window)) return window;
    if (!carrying) carrying = window;
  }
  return carrying;
}

NSImage* symbolNamed(const std::string& name) {
  NSImage* image = [NSImage imageWithSystemSymbolName:nsString(name) accessibilityDescription:nil];
  [image setTemplate:YES];
  return image;
}

}  // namespace

MacStatusBar::MacStatusBar() : target_([[NimbletypeStatusItemTarget alloc] init]) {}

MacStatusBar::~MacStatusBar() {
  target_.clicked = nullptr;
  remove();
}

void MacStatusBar::install() {
  item_ = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
  item_.autosaveName = @"Item-0";
  NSStatusBarButton* button = item_.button;
  button.font = [NSFont monospacedDigitSystemFontOfSize:NSFont.systemFontSize weight:NSFontWeightRegular];
  button.accessibilityLabel = @"Nimbletype";
  button.target = target_;
  button.action = @selector(click:);
  [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
}

// A screen reader takes the tool tip for the button's help.
void MacStatusBar::show(const StatusIcon& icon) {
  if (!item_) install();
  NSStatusBarButton* button = item_.button;
  button.image = symbolNamed(icon.symbol);
  button.title = nsString(icon.title);
  button.imagePosition = icon.title.empty() ? NSImageOnly : NSImageLeading;
  button.toolTip = nsString(icon.toolTip);
}

void MacStatusBar::remove() {
  if (item_) [NSStatusBar.systemStatusBar removeStatusItem:item_];
  item_ = nil;
}

StatusItemPlace MacStatusBar::place() const {
  NSWindow* window = item_ ? windowCarrying(item_) : nil;
  if (!window) return {};
  const NSRect frame = window.frame;
  return {true, BottomLeftRect{frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}};
}

void MacStatusBar::setHighlighted(bool highlighted) {
  [item_.button highlight:highlighted];
}

void MacStatusBar::onClick(std::function<void()> clicked) {
  target_.clicked = std::move(clicked);
}

void MacStatusBar::onPlaceChange(std::function<void()> changed) {
  registrations_.clear();
  if (!changed) return;
  NSNotificationCenter* center = NSNotificationCenter.defaultCenter;
  for (NSNotificationName name in @[
         NSWindowDidMoveNotification, NSWindowDidResizeNotification,
         NSWindowDidChangeOcclusionStateNotification
       ])
    registrations_.push_back(observeNotification(center, name, [changed](NSNotification* told) {
      if (isStatusBarWindow(told.object)) changed();
    }));
  registrations_.push_back(observeNotification(center, NSApplicationDidChangeScreenParametersNotification,
                                               [changed](NSNotification*) { changed(); }));
}

}  // namespace nimbletype
