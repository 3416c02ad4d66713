#include "main/linux_desktop.h"

#include <QGuiApplication>
#include <QScreen>

#include "platform/linux/drawing/x11_overlay_hints.h"
#include "platform/linux/system/linux_paths.h"

namespace nimbletype {

LinuxDesktop::LinuxDesktop(std::optional<std::string> modelFile, bool verbose)
    : log_(verbose),
      accessibility_(QGuiApplication::primaryScreen()->logicalDotsPerInch()),
      eventTap_(loop_),
      eventPoster_(loop_, [this] { return eventTap_.markWindow(); }),
      pasteboard_(loop_),
      ghostSurface_({x11MixesWindows, x11MarkOverlay, x11Flush}),
      emojiSurface_({x11MixesWindows, x11MarkOverlay, x11Flush}),
      alternativesSurface_({x11MixesWindows, x11MarkOverlay, x11Flush}),
      spellChecker_(loop_, {}),
      permissions_(accessibility_),
      defaultsFile_(dataFolder() / "settings.json"),
      rulesFile_(dataFolder() / "rules.json"),
      statisticsFile_(dataFolder() / "stats.json"),
      memoryFile_(dataFolder() / "memory.sealed"),
      defaults_(defaultsFile_, loop_, log_),
      downloads_(loop_),
      secrets_(loop_),
      onDevice_(loop_),
      background_(loop_),
      screenReader_(background_),
      clipboardText_([this] { return pasteboard_.isOurs(); }),
      modelFile_(std::move(modelFile)) {}

Ports LinuxDesktop::ports() {
  return {loop_,
          log_,
          accessibility_,
          workspace_,
          eventTap_,
          eventPoster_,
          pasteboard_,
          secureInput_,
          screens_,
          fontMetrics_,
          ghostSurface_,
          emojiSurface_,
          alternativesSurface_,
          power_,
          spellChecker_,
          permissions_,
          defaults_,
          rulesFile_,
          statisticsFile_,
          memoryFile_,
          http_,
          downloads_,
          secrets_,
          onDevice_,
          background_,
          disk_,
          region_,
          screenReader_,
          &clipboardText_,
          dataFolder(),
          modelFile_,
          {userFullName(), {}, {}}};
}

}  // namespace nimbletype
