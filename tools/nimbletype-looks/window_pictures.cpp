#include "tools/nimbletype-looks/window_pictures.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <functional>
#include <vector>

#include "core/app/launch_at_login.h"
#include "input/source/source_switch.h"
#include "menubar/status_icon.h"
#include "platform/scripted/desktop/scripted_running_apps.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_login_item.h"
#include "platform/scripted/system/scripted_permission_source.h"
#include "platform/scripted/system/scripted_system_settings.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "windows/kit/look.h"
#include "windows/kit/status_picture.h"
#include "windows/menu/qt_menu_panel.h"
#include "windows/playground/playground_window.h"
#include "windows/prompts/hidden_icon_prompt.h"
#include "windows/prompts/rival_prompt.h"
#include "windows/settings/settings_window.h"

namespace nimbletype {
namespace {

constexpr const char* id = "nimbletype";
constexpr int margin = 16, trayIcon = 22, trayZoom = 4;

const MenuState ordinary{.frontApp = "Mail",
                         .wordsToday = 86,
                         .summary = "About 2 min of typing today. 412 words this week.",
                         .locale = "en_GB",
                         .timeZone = "UTC"};

// Window managers answer to a window's new size in their own time.
void rest() {
  constexpr qint64 settling = 120;
  QElapsedTimer time;
  for (time.start(); !time.hasExpired(settling);) QApplication::processEvents(QEventLoop::AllEvents, 10);
}

class NoField : public FieldSource {
 public:
  std::optional<FieldSnapshot> snapshot() override { return std::nullopt; }
  std::optional<std::string> whyNoField() const override { return "none"; }
  void onChange(std::function<void(Change)>) override {}
  void insert(const std::string&, InsertionMethod) override {}
  void deleteBackwards(int) override {}
};

// Puts pictures of one appearance into the folder.
class Photographer {
 public:
  Photographer(const std::filesystem::path& folder, bool dark, const std::string& suffix)
      : folder_(folder), ending_((dark ? "-dark" : "-light") + suffix) {
    wear(*qApp, lookFor(dark));
  }

  void keep(const std::string& name, const QImage& picture) const {
    picture.save(QString::fromStdString((folder_ / (name + ending_ + ".png")).string()));
  }

  // With some of the desktop around it.
  void take(const std::string& name, QWidget& window) const {
    rest();
    const QPixmap picture = window.grab();
    const qreal ratio = picture.devicePixelRatio();
    const int edge = qRound(margin * ratio);
    QImage framed(picture.size() + QSize(2 * edge, 2 * edge), QImage::Format_RGB32);
    framed.fill(currentLook().isDark ? QColor("#101010") : QColor("#c9c6c1"));
    QPainter painter(&framed);
    QImage plain = picture.toImage();
    plain.setDevicePixelRatio(1);
    painter.drawImage(edge, edge, plain);
    painter.end();
    keep(name, framed);
  }

 private:
  std::filesystem::path folder_;
  std::string ending_;
};

struct MenuScene {
  const char* name;
  std::function<void(MenuState&)> change;
  bool unfolded = false;
};

const std::vector<MenuScene>& menuScenes() {
  static const WallTime end =
      std::chrono::sys_days{std::chrono::year(2025) / 3 / 7} + std::chrono::minutes(870);
  static const std::vector<MenuScene> scenes{
      {"menu-ready", [](MenuState&) {}},
      {"menu-choices", [](MenuState& s) { s.showsCount = true; }, true},
      {"menu-access",
       [](MenuState& s) {
         s.hasAccess = false, s.wordsToday = 0,
         s.summary = "Start typing anywhere. Nimbletype keeps count here.";
       }},
      {"menu-rival", [](MenuState& s) { s.rivals = {"Tab Type"}; }},
      {"menu-rival-refused", [](MenuState& s) { s.rivals = {"Tab Type"}, s.quitState = QuitState::refused; }},
      {"menu-app-paused", [](MenuState& s) { s.frontAppPausedUntil = end; }},
      {"menu-app-off", [](MenuState& s) { s.isFrontAppOff = true, s.frontApp = "Terminal"; }},
      {"menu-paused-until", [](MenuState& s) { s.isPausedEverywhere = true, s.pausedUntil = end; }},
      {"menu-paused", [](MenuState& s) { s.isPausedEverywhere = true; }},
      {"menu-failure", [](MenuState& s) {
         s.failure = "Ollama isn't running at localhost. Start it, or choose another engine in Settings.";
         s.download = MenuState::Download{2'100'000'000, 4'980'000'000};
       }}};
  return scenes;
}

void takeMenus(const Photographer& photographer) {
  ScriptedSystemSettings settings;
  settings.motionReduced = true;
  for (const MenuScene& scene : menuScenes()) {
    QtMenuPanel panel(settings, {});
    MenuState state = ordinary;
    scene.change(state);
    panel.open(menuContent(state, scene.unfolded), std::nullopt);
    if (QWidget* popup = QApplication::activePopupWidget()) photographer.take(scene.name, *popup);
    panel.close();
  }
}

void takeRivalPrompts(const Photographer& photographer) {
  VirtualMainLoop loop;
  MemoryDefaultsStore defaults;
  Preferences prefs(defaults);
  ScriptedRunningApps apps;
  RivalWatcher watcher(apps, loop, RivalApps(id));
  apps.stubborn = {1};
  apps.launch({.processID = 1, .bundleID = "org.example.tabtype", .appName = "Tab Type"});
  watcher.start({});
  RivalPrompt prompt(watcher, prefs);
  prompt.present();
  photographer.take("rival-one", prompt);
  watcher.quitRivals(false);
  photographer.take("rival-quitting", prompt);
  loop.advance(RivalWatcher::patience);
  photographer.take("rival-refused", prompt);
  apps.launch({.processID = 2, .bundleID = "org.example.inlineai", .appName = "InlineAI"});
  prefs.quitRivalsAutomatically.set(true);
  watcher.quitRivals(true);
  photographer.take("rival-gone", prompt);
  apps.launch({.processID = 1, .bundleID = "org.example.tabtype", .appName = "Tab Type"});
  apps.launch({.processID = 2, .bundleID = "org.example.inlineai", .appName = "InlineAI"});
  photographer.take("rival-two", prompt);
}

void takeOtherWindows(const Photographer& photographer) {
  for (const std::string organiser : {"", "Bartender"}) {
    HiddenIconPrompt prompt({{}, [] {}, [] {}});
    prompt.blame(organiser);
    prompt.present();
    photographer.take(organiser.empty() ? "hidden-icon" : "hidden-icon-organiser", prompt);
  }
  VirtualMainLoop loop;
  MemoryDefaultsStore defaults;
  Preferences prefs(defaults);
  RecordingSystemLog log;
  ScriptedLoginItem item;
  LaunchAtLogin login(item, log);
  ScriptedPermissionSource source;
  ScriptedSystemSettings settings;
  settings.predictions = true;
  Permissions permissions(source, settings, loop);
  SettingsWindow window({prefs, login, permissions});
  window.present();
  photographer.take("settings", window);
  NoField others;
  SourceSwitch sources(others);
  PlaygroundWindow playground(sources, prefs, id);
  playground.present();
  photographer.take("playground", playground);
}

// The three icons, and the count, as a tray of 22 pixels shows them on a light and a dark panel.
void takeTray(const Photographer& photographer) {
  std::vector<StatusIcon> icons;
  for (const std::int64_t words : {0, 7, 86, 412, 1234}) {
    MenuState state = ordinary;
    state.showsCount = true;
    state.wordsToday = words;
    icons.push_back(statusIcon(state));
  }
  MenuState paused = ordinary, barred = ordinary;
  paused.isPausedEverywhere = true;
  barred.hasAccess = false;
  for (MenuState state : {paused, barred})
    for (const bool counts : {false, true}) {
      state.showsCount = counts;
      icons.push_back(statusIcon(state));
    }
  const int step = trayIcon + 8;
  QImage panel(step * static_cast<int>(icons.size()) + 8, step + 8, QImage::Format_RGB32);
  panel.fill(currentLook().isDark ? QColor("#242424") : QColor("#ececec"));
  QPainter painter(&panel);
  int x = 8;
  for (const StatusIcon& icon : icons) {
    painter.drawPixmap(x, 8, statusPicture(icon).pixmap(QSize(trayIcon, trayIcon), 1.0));
    x += step;
  }
  painter.end();
  photographer.keep("tray", panel.scaled(panel.size() * trayZoom));
}

}  // namespace

void takeWindowPictures(const std::filesystem::path& folder, const std::string& suffix) {
  std::filesystem::create_directories(folder);
  for (const bool dark : {false, true}) {
    const Photographer photographer(folder, dark, suffix);
    takeTray(photographer);
    takeMenus(photographer);
    takeRivalPrompts(photographer);
    takeOtherWindows(photographer);
  }
}

}  // namespace nimbletype
