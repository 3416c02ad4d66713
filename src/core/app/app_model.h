#pragma once
#include <filesystem>
#include <optional>
#include <string>

#include "core/app/key_router.h"
#include "core/app/launch_at_login.h"
#include "core/app/menu_model.h"
#include "core/app/migration/migration.h"
#include "core/app/system_wide_watch.h"
#include "core/app/window_manager.h"
#include "core/completion/completion_engine.h"
#include "core/rules/app_rules.h"
#include "core/settings/preferences.h"
#include "engines/provider/provider_hub.h"
#include "engines/store/model_store.h"
#include "input/context/context_collector.h"
#include "input/insertion/text_injector.h"
#include "input/keys/key_tap.h"
#include "input/monitors/permissions.h"
#include "input/monitors/power_monitor.h"
#include "input/monitors/typo_checker.h"
#include "input/source/ax_field_source.h"
#include "input/source/source_switch.h"
#include "menubar/hidden_icon_check.h"
#include "menubar/rival_watcher.h"
#include "menubar/status_item_controller.h"
#include "overlay/emoji/emoji_picker_panel.h"
#include "overlay/ghost/ghost_panel.h"
#include "overlay/lists/alternatives_panel.h"
#include "personal/memory/writing_memory.h"
#include "personal/stats/stats_store.h"
#include "platform/desktop/running_apps.h"
#include "platform/desktop/screen_reader.h"
#include "platform/desktop/status_bar.h"
#include "platform/desktop/workspace.h"
#include "platform/drawing/font_metrics.h"
#include "platform/keys/event_poster.h"
#include "platform/language/region_source.h"
#include "platform/network/http_client.h"
#include "platform/network/http_downloads.h"
#include "platform/on_device/on_device_model.h"
#include "platform/pasteboard/clipboard_text.h"
#include "platform/pasteboard/pasteboard.h"
#include "platform/storage/defaults_store.h"
#include "platform/storage/disk_space.h"
#include "platform/storage/file_store.h"
#include "platform/storage/secret_store.h"
#include "platform/system/background_work.h"
#include "platform/system/login_item.h"
#include "platform/system/system_settings.h"

namespace nimbletype {

class AppModel;

// Everything a desktop lends the application. All of it outlives the model.
struct Ports {
  MainLoop& loop;
  SystemLog& log;
  Accessibility& accessibility;
  Workspace& workspace;
  RunningApps& runningApps;
  EventTap& eventTap;
  EventPoster& eventPoster;
  Pasteboard& pasteboard;
  SecureInput& secureInput;
  Screens& screens;
  FontMetrics& fontMetrics;
  OverlaySurface& ghostSurface;
  OverlaySurface& emojiSurface;
  OverlaySurface& alternativesSurface;
  PowerSource& power;
  SpellChecker& spellChecker;
  PermissionSource& permissions;
  SystemSettings& systemSettings;
  LoginItem& loginItem;
  StatusBar& statusBar;
  DefaultsStore& defaults;
  const DefaultsStore& earlierDefaults;  // of the maker's earlier product
  FileStore& rulesFile;
  FileStore& statisticsFile;
  FileStore& memoryFile;
  HttpClient& http;
  HttpDownloads& downloads;
  SecretStore& secrets;
  SecretStore& earlierSecrets;
  OnDeviceModel& onDevice;
  BackgroundWork& background;
  DiskSpace& disk;
  RegionSource& region;
  ScreenReader& screenReader;
  ClipboardText* clipboardText = nullptr;  // none where it cannot be told what was copied
  std::filesystem::path dataFolder, earlierFolder;
  std::optional<std::string> modelFile;  // used as it is, instead of the downloaded one
  UserIdentity user;
  std::string bundleIdentifier;  // this application's
  bool localOnly = false;        // the environment asks for silence
  // Makes the windows' manager. The model is not complete yet: it may be kept, not used.
  std::function<std::unique_ptr<WindowManager>(AppModel&)> makeWindows{};
  std::function<void()> quit{};  // ends the main loop
};

// The root of the application: builds every service in a fixed order and keeps them for the life of the
// process.
class AppModel {
 public:
  explicit AppModel(Ports ports);
  ~AppModel();
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  // Starts following the user's typing, now or as soon as the desktop allows it. False when the key tap does
  // not run; everything else that is allowed runs all the same.
  bool start();
  // Puts up the item in the menu bar and looks out for rivals.
  void showFace();
  // For quitting: lets go of the keyboard, the field that has the focus is left, and the memory is saved.
  // That may still be under way when this returns.
  void stop();

  // Whether there is an engine to ask, as far as that is known without asking one.
  bool canWrite() const;
  // Whether the intro plays without its sound.
  bool isIntroMuted() const { return prefs_.introMuted.get() || ports_.localOnly; }

  CompletionEngine& engine() { return engine_; }
  Preferences& preferences() { return prefs_; }
  AppRules& rules() { return rules_; }
  StatsStore& stats() { return stats_; }
  WritingMemory& memory() { return memory_; }
  Permissions& permissions() { return permissions_; }
  PowerMonitor& power() { return power_; }
  ModelStore& modelStore() { return modelStore_; }
  RivalWatcher& rivals() { return rivals_; }
  MenuBarHiders& menuBarHiders() { return hiders_; }
  LaunchAtLogin& launchAtLogin() { return launchAtLogin_; }
  WindowManager& windows() { return *windows_; }
  // Where a practice field of our own windows makes itself known.
  SourceSwitch& source() { return source_; }
  const Ports& ports() const { return ports_; }

 private:
  bool mayLookInto(const RunningApp& app) const;
  void rivalAppeared();
  void accessMayHaveArrived();
  std::vector<Task> followSettings();

  Ports ports_;
  Permissions permissions_;
  RivalWatcher rivals_;
  PowerMonitor power_;
  std::unique_ptr<WindowManager> windows_;
  TextInjector injector_;
  AXFieldSource fieldSource_;
  SourceSwitch source_;
  KeyTap keyTap_;
  Migration migration_;  // before all that reads the settings or the folder
  Preferences prefs_;
  AppRules rules_;
  StatsStore stats_;
  WritingMemory memory_;
  ModelStore modelStore_;
  NamedModel namedModel_;
  ProviderHub hub_;
  TypoChecker typo_;
  GhostPanel ghost_;
  EmojiIndex emoji_;
  EmojiPickerPanel emojiPicker_;
  AlternativesPanel alternatives_;
  ContextCollector context_;
  CompletionEngine engine_;
  KeyRouter keys_;
  SystemWideWatch watch_;
  LaunchAtLogin launchAtLogin_;
  MenuBarHiders hiders_;
  MenuModel menu_;
  StatusItemController statusItem_;
  HiddenIconCheck hiddenIcon_;
  std::vector<Task> following_;
};

}  // namespace nimbletype
