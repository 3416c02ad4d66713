#include "platform/mac/drawing/mac_overlay_surface.h"

#import <QuartzCore/QuartzCore.h>

#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/drawing/mac_fonts.h"

namespace {

using namespace nimbletype;

NSColor* colorFor(const Color& color) {
  return [NSColor colorWithSRGBRed:color.red green:color.green blue:color.blue alpha:color.alpha];
}

NSParagraphStyle* lineStyle(bool rightToLeft) {
  NSMutableParagraphStyle* style = [[NSMutableParagraphStyle alloc] init];
  style.baseWritingDirection = rightToLeft ? NSWritingDirectionRightToLeft : NSWritingDirectionLeftToRight;
  style.alignment = NSTextAlignmentLeft;
  return style;
}

struct Painter {
  void operator()(const BoxDraw& box) const {
    const NSRect rect = NSMakeRect(box.rect.x, box.rect.y, box.rect.width, box.rect.height);
    [colorFor(box.fill) setFill];
    [[NSBezierPath bezierPathWithRoundedRect:rect xRadius:box.radius yRadius:box.radius] fill];
    if (box.stroke.alpha <= 0) return;
    constexpr double half = 0.5;
    [colorFor(box.stroke) setStroke];
    [[NSBezierPath bezierPathWithRoundedRect:NSInsetRect(rect, half, half)
                                     xRadius:box.radius - half
                                     yRadius:box.radius - half] stroke];
  }

  // A string is drawn from the bottom left of its line, which lies a descender under the baseline.
  void operator()(const TextDraw& text) const {
    NSFont* font = fontFor(text.font);
    NSDictionary* looks = @{
      NSFontAttributeName : font,
      NSForegroundColorAttributeName : colorFor(text.color),
      NSParagraphStyleAttributeName : lineStyle(text.rightToLeft)
    };
    NSAttributedString* string = [[NSAttributedString alloc] initWithString:nsString(text.text)
                                                                 attributes:looks];
    [string drawAtPoint:NSMakePoint(text.x, text.baseline + font.descender)];
  }
};

}  // namespace

@interface NimbletypeOverlayPanel : NSPanel
@end

@implementation NimbletypeOverlayPanel
- (BOOL)canBecomeKeyWindow {
  return NO;
}
- (BOOL)canBecomeMainWindow {
  return NO;
}
// The layout has decided where the panel stands; AppKit would push it under the menu bar.
- (NSRect)constrainFrameRect:(NSRect)frame toScreen:(NSScreen*)__unused screen {
  return frame;
}
@end

@interface NimbletypeOverlayView : NSView
@end

@implementation NimbletypeOverlayView {
  nimbletype::DrawList _list;
}
- (void)setList:(const nimbletype::DrawList&)list {
  _list = list;
  self.needsDisplay = YES;
}
- (BOOL)isOpaque {
  return NO;
}
- (void)drawRect:(NSRect)__unused dirty {
  for (const auto& item : _list.items) std::visit(Painter{}, item);
}
@end

namespace nimbletype {

MacOverlaySurface::MacOverlaySurface()
    : panel_([[NimbletypeOverlayPanel alloc] initWithContentRect:NSZeroRect
                                                       styleMask:NSWindowStyleMaskNonactivatingPanel
                                                         backing:NSBackingStoreBuffered
                                                           defer:YES]) {
  panel_.releasedWhenClosed = NO;
  panel_.floatingPanel = YES;
  panel_.level = NSPopUpMenuWindowLevel;
  panel_.backgroundColor = NSColor.clearColor;
  panel_.opaque = NO;
  panel_.hasShadow = NO;
  panel_.ignoresMouseEvents = YES;
  panel_.hidesOnDeactivate = NO;
  panel_.animationBehavior = NSWindowAnimationBehaviorNone;
  panel_.collectionBehavior = NSWindowCollectionBehaviorCanJoinAllSpaces |
                              NSWindowCollectionBehaviorStationary | NSWindowCollectionBehaviorIgnoresCycle |
                              NSWindowCollectionBehaviorFullScreenAuxiliary;
  panel_.contentView = [[NimbletypeOverlayView alloc] initWithFrame:NSZeroRect];
}

MacOverlaySurface::~MacOverlaySurface() {
  [panel_ close];
}

void MacOverlaySurface::show(const DrawList& list) {
  const NSRect frame = NSMakeRect(list.frame.x, list.frame.y, list.frame.width, list.frame.height);
  [static_cast<NimbletypeOverlayView*>(panel_.contentView) setList:list];
  [panel_ setFrame:frame display:NO];
  [panel_ orderFrontRegardless];
  [panel_ displayIfNeeded];
  [CATransaction flush];  // to the screen now, not at the end of this turn of the run loop
}

void MacOverlaySurface::hide() {
  [panel_ orderOut:nil];
}

}  // namespace nimbletype
