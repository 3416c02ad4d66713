#import <AppKit/AppKit.h>

#include <memory>

#include "core/app/app_model.h"
#include "main/data_files.h"
#include "main/environment.h"
#include "main/quitting.h"
#include "platform/mac/accessibility/mac_accessibility.h"
#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/desktop/mac_screen_reader.h"
#include "platform/mac/desktop/mac_screens.h"
#include "platform/mac/desktop/mac_workspace.h"
#include "platform/mac/drawing/mac_font_metrics.h"
#include "platform/mac/drawing/mac_overlay_surface.h"
#include "platform/mac/keys/mac_event_poster.h"
#include "platform/mac/keys/mac_event_tap.h"
#include "platform/mac/keys/mac_secure_input.h"
#include "platform/mac/language/mac_region_source.h"
#include "platform/mac/language/mac_spell_checker.h"
#include "platform/mac/network/mac_http_client.h"
#include "platform/mac/network/mac_http_downloads.h"
#include "platform/mac/on_device/mac_on_device_model.h"
#include "platform/mac/pasteboard/mac_clipboard_text.h"
#include "platform/mac/pasteboard/mac_pasteboard.h"
#include "platform/mac/storage/mac_defaults_store.h"
#include "platform/mac/storage/mac_disk_space.h"
#include "platform/mac/storage/mac_secret_store.h"
#include "platform/mac/system/mac_background_work.h"
#include "platform/mac/system/mac_main_loop.h"
#include "platform/mac/system/mac_paths.h"
#include "platform/mac/system/mac_permission_source.h"
#include "platform/mac/system/mac_power_source.h"
#include "platform/mac/system/mac_system_log.h"
#include "platform/mac/system/mac_system_settings.h"

namespace {

using namespace nimbletype;

NSString* defaultsDomain() {
  NSString* bundle = NSBundle.mainBundle.bundleIdentifier;
  return bundle ? bundle : @"com.moravelle.nimbletype";
}

UserIdentity currentUser() {
  return {utf8String(NSFullUserName()), utf8String(NSLocale.currentLocale.localeIdentifier),
          utf8String(NSTimeZone.localTimeZone.name)};
}

// The adapters, and over them the model.
class Application {
 public:
  // Neither tap nor fields can be had before the user trusts this application.
  void start() {
    model_.start();
    if (!model_.permissions().accessibility()) model_.permissions().askForAccessibility();
  }
  void stop() {
    quit(model_, [] {
      [NSRunLoop.currentRunLoop runMode:NSDefaultRunLoopMode
                             beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.02]];
    });
  }

 private:
  MacMainLoop loop_;
  MacSystemLog log_;
  MacAccessibility accessibility_;
  MacWorkspace workspace_;
  MacEventTap eventTap_{loop_, log_};
  MacEventPoster eventPoster_;
  MacPasteboard pasteboard_{loop_};
  MacSecureInput secureInput_;
  MacScreens screens_;
  MacFontMetrics fontMetrics_;
  MacOverlaySurface ghostSurface_, emojiSurface_, alternativesSurface_;
  MacPowerSource power_;
  MacSpellChecker spellChecker_;
  MacPermissionSource permissions_;
  MacSystemSettings systemSettings_;
  MacDefaultsStore defaults_{defaultsDomain()};
  DataFiles files_{dataFolder()};
  MacHttpClient http_;
  MacHttpDownloads downloads_{loop_};
  MacSecretStore secrets_;
  MacOnDeviceModel onDevice_;
  MacBackgroundWork background_;
  MacDiskSpace disk_;
  MacRegionSource region_;
  MacScreenReader screenReader_;
  MacClipboardText clipboardText_{[this] { return pasteboard_.isOurs(); }};
  AppModel model_{{.loop = loop_,
                   .log = log_,
                   .accessibility = accessibility_,
                   .workspace = workspace_,
                   .eventTap = eventTap_,
                   .eventPoster = eventPoster_,
                   .pasteboard = pasteboard_,
                   .secureInput = secureInput_,
                   .screens = screens_,
                   .fontMetrics = fontMetrics_,
                   .ghostSurface = ghostSurface_,
                   .emojiSurface = emojiSurface_,
                   .alternativesSurface = alternativesSurface_,
                   .power = power_,
                   .spellChecker = spellChecker_,
                   .permissions = permissions_,
                   .systemSettings = systemSettings_,
                   .defaults = defaults_,
                   .rulesFile = files_.rules,
                   .statisticsFile = files_.statistics,
                   .memoryFile = files_.memory,
                   .http = http_,
                   .downloads = downloads_,
                   .secrets = secrets_,
                   .onDevice = onDevice_,
                   .background = background_,
                   .disk = disk_,
                   .region = region_,
                   .screenReader = screenReader_,
                   .clipboardText = &clipboardText_,
                   .dataFolder = dataFolder(),
                   .modelFile = modelInEnvironment(),
                   .user = currentUser()}};
};

}  // namespace

@interface NimbletypeDelegate : NSObject <NSApplicationDelegate>
@end

@implementation NimbletypeDelegate {
  std::unique_ptr<Application> _application;
}
- (void)applicationDidFinishLaunching:(NSNotification*)__unused notification {
  _application = std::make_unique<Application>();
  _application->start();
}
- (void)applicationWillTerminate:(NSNotification*)__unused notification {
  _application->stop();
  _application.reset();
}
@end

int main() {
  @autoreleasepool {
    NSApplication* application = NSApplication.sharedApplication;
    NimbletypeDelegate* delegate = [NimbletypeDelegate new];
    application.delegate = delegate;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [application run];
  }
  return 0;
}
