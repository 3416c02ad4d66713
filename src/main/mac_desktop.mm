#include "main/mac_desktop.h"

#import <Foundation/Foundation.h>

#include "main/earlier_product.h"
#include "main/environment.h"
#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/system/mac_paths.h"

namespace nimbletype {
namespace {

NSString* defaultsDomain() {
  NSString* bundle = NSBundle.mainBundle.bundleIdentifier;
  return bundle ? bundle : @"com.moravelle.nimbletype";
}

UserIdentity currentUser() {
  return {utf8String(NSFullUserName()), utf8String(NSLocale.currentLocale.localeIdentifier),
          utf8String(NSTimeZone.localTimeZone.name)};
}

}  // namespace

MacDesktop::MacDesktop()
    : defaults_(defaultsDomain()),
      earlierDefaults_(nsString(earlier_product::domain)),
      files_(dataFolder()),
      earlierSecrets_(earlier_product::domain) {}

Ports MacDesktop::ports() {
  return {.loop = loop_,
          .log = log_,
          .accessibility = accessibility_,
          .workspace = workspace_,
          .runningApps = runningApps_,
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
          .loginItem = loginItem_,
          .statusBar = statusBar_,
          .defaults = defaults_,
          .earlierDefaults = earlierDefaults_,
          .rulesFile = files_.rules,
          .statisticsFile = files_.statistics,
          .memoryFile = files_.memory,
          .http = http_,
          .downloads = downloads_,
          .secrets = secrets_,
          .earlierSecrets = earlierSecrets_,
          .onDevice = onDevice_,
          .background = background_,
          .disk = disk_,
          .region = region_,
          .screenReader = screenReader_,
          .clipboardText = &clipboardText_,
          .dataFolder = dataFolder(),
          .earlierFolder = earlier_product::folder(dataFolder()),
          .modelFile = modelInEnvironment(),
          .user = currentUser(),
          .bundleIdentifier = utf8String(defaultsDomain()),
          .localOnly = isLocalOnly()};
}

}  // namespace nimbletype
