#include "main/linux_desktop.h"

#include "main/earlier_product.h"
#include "main/environment.h"
#include "platform/linux/system/linux_paths.h"
#include "platform/linux/x11/x11_font_resolution.h"

namespace nimbletype {

LinuxDesktop::LinuxDesktop(std::optional<std::string> modelFile, bool verbose)
    : log_(verbose),
      accessibility_(x11FontDotsPerInch()),
      eventTap_(loop_),
      eventPoster_(loop_, [this] { return eventTap_.markWindow(); }),
      pasteboard_(loop_),
      ghostSurface_(screens_),
      emojiSurface_(screens_),
      alternativesSurface_(screens_),
      spellChecker_(loop_, {}),
      permissions_(accessibility_),
      loginItem_(configHome() / "autostart", runningProgram()),
      defaultsFile_(dataFolder() / "settings.json"),
      files_(dataFolder()),
      defaults_(defaultsFile_, loop_, log_),
      earlierDefaultsFile_(earlier_product::folder(dataFolder()) / "settings.json"),
      earlierDefaults_(earlierDefaultsFile_, loop_, log_),
      downloads_(loop_),
      secrets_(loop_),
      earlierSecrets_(loop_, earlier_product::domain),
      onDevice_(loop_),
      background_(loop_),
      screenReader_(background_),
      clipboardText_([this] { return pasteboard_.isOurs(); }),
      modelFile_(std::move(modelFile)) {}

Ports LinuxDesktop::ports() {
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
          .modelFile = modelFile_,
          .user = {.fullName = userFullName(), .locale = {}, .timeZone = {}},
          .bundleIdentifier = "nimbletype",
          .localOnly = isLocalOnly()};
}

}  // namespace nimbletype
