#import <AppKit/AppKit.h>

#include <QApplication>
#include <functional>
#include <optional>
#include <utility>

#include "core/app/app_model.h"
#include "main/mac_desktop.h"
#include "main/quit_signals.h"
#include "main/quitting.h"

namespace {

using namespace nimbletype;

// A turn of the loop that ends though nothing happens.
void serveLoop() {
  [NSRunLoop.currentRunLoop runMode:NSDefaultRunLoopMode
                         beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.02]];
}

// The adapters, and over them the model.
class Application {
 public:
  // Neither tap nor fields can be had before the user trusts this application.
  Application() {
    model_.start();
    if (!model_.permissions().accessibility()) model_.permissions().askForAccessibility();
  }
  ~Application() { quit(model_, serveLoop); }
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

 private:
  MacDesktop desktop_;
  AppModel model_{desktop_.ports()};
};

// What the system tells the application.
struct Events {
  std::function<void()> launched;
  std::function<void()> reopened;  // started again while it runs
  std::function<void()> quitting;
};

}  // namespace

@interface NimbletypeDelegate : NSObject <NSApplicationDelegate>
- (instancetype)initWithEvents:(Events)events;
@end

@implementation NimbletypeDelegate {
  Events _events;
}
- (instancetype)initWithEvents:(Events)events {
  if ((self = [super init])) _events = std::move(events);
  return self;
}
- (void)applicationDidFinishLaunching:(NSNotification*)__unused notification {
  _events.launched();
}
- (BOOL)applicationShouldHandleReopen:(NSApplication*)__unused sender
                    hasVisibleWindows:(BOOL)__unused hasVisibleWindows {
  if (_events.reopened) _events.reopened();
  return NO;
}
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)__unused sender {
  return NO;
}
// Qt would call it off and leave its loop instead, which the end of a session takes for a refusal.
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)__unused sender {
  return NSTerminateNow;
}
- (void)applicationWillTerminate:(NSNotification*)__unused notification {
  _events.quitting();
}
@end

int main(int argc, char** argv) {
  @autoreleasepool {
    // Qt would bring the application in front of the one that the user works in.
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
    std::optional<Application> application;
    // Qt's own delegate takes the place of this one and hands on what it is told.
    NS_VALID_UNTIL_END_OF_SCOPE NimbletypeDelegate* delegate =
        [[NimbletypeDelegate alloc] initWithEvents:{.launched = [&] { application.emplace(); },
                                                    .reopened = {},
                                                    .quitting = [&] { application.reset(); }}];
    NSApplication.sharedApplication.delegate = delegate;
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];
    quitOnSignals();
    const int status = QApplication::exec();
    application.reset();
    return status;
  }
}
