#pragma once
#include "core/app/app_model.h"
#include "main/data_files.h"
#include "platform/linux/accessibility/atspi_accessibility.h"
#include "platform/linux/desktop/linux_running_apps.h"
#include "platform/linux/desktop/tesseract_screen_reader.h"
#include "platform/linux/desktop/x11_screens.h"
#include "platform/linux/desktop/x11_workspace.h"
#include "platform/linux/drawing/x11_overlay_surface.h"
#include "platform/linux/keys/x11_secure_input.h"
#include "platform/linux/keys/xcb_event_poster.h"
#include "platform/linux/keys/xcb_event_tap.h"
#include "platform/linux/language/hunspell_spell_checker.h"
#include "platform/linux/language/linux_region_source.h"
#include "platform/linux/on_device/absent_on_device_model.h"
#include "platform/linux/pasteboard/x11_clipboard_text.h"
#include "platform/linux/pasteboard/x11_pasteboard.h"
#include "platform/linux/storage/json_defaults_store.h"
#include "platform/linux/storage/linux_disk_space.h"
#include "platform/linux/storage/secret_service_store.h"
#include "platform/linux/system/autostart_login_item.h"
#include "platform/linux/system/linux_background_work.h"
#include "platform/linux/system/linux_permission_source.h"
#include "platform/linux/system/linux_system_settings.h"
#include "platform/linux/system/stderr_system_log.h"
#include "platform/linux/system/upower_power_source.h"
#include "platform/linux/tray/tray_status_bar.h"
#include "platform/qt/drawing/qt_font_metrics.h"
#include "platform/qt/network/qt_http_client.h"
#include "platform/qt/network/qt_http_downloads.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/storage/read_only_file.h"
#include "windows/kit/status_picture.h"

namespace nimbletype {

// All adapters of the Linux desktop. Needs a running QApplication on an X11 display.
class LinuxDesktop {
 public:
  LinuxDesktop(std::optional<std::string> modelFile, bool verbose);
  // Without the windows, which are not the desktop's.
  Ports ports();
  MainLoop& loop() { return loop_; }
  bool mixesWindows() const { return ghostSurface_.mixesWindows(); }

 private:
  StderrSystemLog log_;
  QtMainLoop loop_;
  AtspiAccessibility accessibility_;
  std::shared_ptr<DesktopEntries> entries_ = std::make_shared<DesktopEntries>();
  X11Workspace workspace_{entries_};
  LinuxRunningApps runningApps_{entries_};
  XcbEventTap eventTap_;
  XcbEventPoster eventPoster_;
  X11Pasteboard pasteboard_;
  X11SecureInput secureInput_;
  X11Screens screens_;
  QtFontMetrics fontMetrics_;
  X11OverlaySurface ghostSurface_, emojiSurface_, alternativesSurface_;
  UPowerPowerSource power_;
  HunspellSpellChecker spellChecker_;
  LinuxPermissionSource permissions_;
  LinuxSystemSettings systemSettings_;
  AutostartLoginItem loginItem_;
  TrayStatusBar statusBar_{statusPicture};
  AtomicFile defaultsFile_;
  DataFiles files_;
  JsonDefaultsStore defaults_;
  ReadOnlyFile earlierDefaultsFile_;
  JsonDefaultsStore earlierDefaults_;
  QtHttpClient http_;
  QtHttpDownloads downloads_;
  SecretServiceStore secrets_, earlierSecrets_;
  AbsentOnDeviceModel onDevice_;
  LinuxBackgroundWork background_;
  LinuxDiskSpace disk_;
  LinuxRegionSource region_;
  TesseractScreenReader screenReader_;
  X11ClipboardText clipboardText_;
  std::optional<std::string> modelFile_;
};

}  // namespace nimbletype
