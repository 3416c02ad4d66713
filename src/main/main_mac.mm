#import <AppKit/AppKit.h>

#include <QApplication>
#include <QWindow>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "main/arguments.h"
#include "main/face.h"
#include "main/mac_desktop.h"
#include "main/quit_signals.h"
#include "main/quitting.h"
#include "main/single_instance.h"

namespace {

using namespace nimbletype;

// An agent's windows get the keyboard only while the agent is the active application.
class AppActivation {
 public:
  void take() {
    NSRunningApplication* front = NSWorkspace.sharedWorkspace.frontmostApplication;
    if (![front isEqual:NSRunningApplication.currentApplication]) before_ = front;
    [NSApp activateIgnoringOtherApps:YES];
  }
  // Unless another window of ours is open, or the user has gone elsewhere already.
  void giveBack() {
    const bool hasWindows = std::ranges::any_of(QGuiApplication::topLevelWindows(),
                                                [](const QWindow* window) { return window->isVisible(); });
    if (NSApp.isActive && !hasWindows) [before_ activateWithOptions:0];
    before_ = nil;
  }

 private:
  NSRunningApplication* before_ = nil;
};

// The adapters, and over them the model.
class Application {
 public:
  // Neither tap nor fields can be had before the user trusts this application.
  Application(const Arguments& arguments, SingleInstance& instance) : instance_(instance) {
    model_.start();
    obey(model_.windows(), arguments, false);
    model_.showFace();
    if (!model_.permissions().accessibility()) model_.permissions().askForAccessibility();
    instance_.onArguments([this](const std::vector<std::string>& words) {
      if (const auto later = readArguments(words)) obey(model_.windows(), *later, true);
    });
  }
  ~Application() {
    instance_.close();
    quit(model_, 0);
  }
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Opened once more, as one opens an application to see it.
  void reopened() { obey(model_.windows(), {}, true); }

 private:
  SingleInstance& instance_;
  MacDesktop desktop_;
  AppActivation activation_;
  AppModel model_{withWindows(
      desktop_.ports(),
      {.activate = [this] { activation_.take(); }, .giveBack = [this] { activation_.giveBack(); }},
      [] { [NSApp terminate:nil]; })};
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
  const std::vector<std::string> words(argv + 1, argv + argc);
  const auto arguments = readArguments(words);
  if (!arguments) return std::fprintf(stderr, "%s\n", arguments.error().c_str()), 2;
  if (arguments->help) return std::printf("%s\n", argumentsHelp().c_str()), 0;
  if (arguments->version) return std::printf("nimbletype %s\n", NIMBLETYPE_VERSION), 0;
  @autoreleasepool {
    // Qt would bring the application in front of the one that the user works in.
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
    // Raising a window would do so, too.
    qputenv("QT_MAC_SET_RAISE_PROCESS", "0");
    std::unique_ptr<Application> application;
    std::optional<SingleInstance> instance;
    // What comes while it ends finds none.
    const auto end = [&] { const auto ending = std::move(application); };
    // Qt's own delegate takes the place of this one and hands on what it is told.
    NS_VALID_UNTIL_END_OF_SCOPE NimbletypeDelegate* delegate = [[NimbletypeDelegate alloc]
        initWithEvents:{.launched =
                            [&] { application = std::make_unique<Application>(*arguments, *instance); },
                        .reopened =
                            [&] {
                              if (application) application->reopened();
                            },
                        .quitting = end}];
    NSApplication.sharedApplication.delegate = delegate;
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    instance.emplace("nimbletype");
    if (!instance->isFirst() && instance->handOver(words)) return 0;
    if (!instance->isFirst()) return 1;
    [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];
    quitOnSignals();
    const int status = QApplication::exec();
    end();
    return status;
  }
}
