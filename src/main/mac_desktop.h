#pragma once
#include "core/app/app_model.h"
#include "main/data_files.h"
#include "platform/mac/accessibility/mac_accessibility.h"
#include "platform/mac/desktop/mac_running_apps.h"
#include "platform/mac/desktop/mac_screen_reader.h"
#include "platform/mac/desktop/mac_screens.h"
#include "platform/mac/desktop/mac_status_bar.h"
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
#include "platform/mac/system/mac_login_item.h"
#include "platform/mac/system/mac_main_loop.h"
#include "platform/mac/system/mac_permission_source.h"
#include "platform/mac/system/mac_power_source.h"
#include "platform/mac/system/mac_system_log.h"
#include "platform/mac/system/mac_system_settings.h"

namespace nimbletype {

// All adapters of macOS. Needs an application that has finished launching.
class MacDesktop {
 public:
  MacDesktop();
  // Without the windows, which are not the desktop's.
  Ports ports();

 private:
  MacMainLoop loop_;
  MacSystemLog log_;
  MacAccessibility accessibility_;
  MacWorkspace workspace_;
  MacRunningApps runningApps_;
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
  MacLoginItem loginItem_;
  MacStatusBar statusBar_;
  MacDefaultsStore defaults_, earlierDefaults_;
  DataFiles files_;
  MacHttpClient http_;
  MacHttpDownloads downloads_{loop_};
  MacSecretStore secrets_, earlierSecrets_;
  MacOnDeviceModel onDevice_;
  MacBackgroundWork background_;
  MacDiskSpace disk_;
  MacRegionSource region_;
  MacScreenReader screenReader_;
  MacClipboardText clipboardText_{[this] { return pasteboard_.isOurs(); }};
};

}  // namespace nimbletype
