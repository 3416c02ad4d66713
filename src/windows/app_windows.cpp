#include "windows/app_windows.h"

#include <QApplication>
#include <QPalette>
#include <QShortcut>

#include "core/app/app_model.h"
#include "platform/system/desktop_kind.h"
#include "windows/kit/look.h"
#include "windows/kit/status_picture.h"
#include "windows/menu/qt_menu_panel.h"
#include "windows/playground/playground_window.h"
#include "windows/prompts/hidden_icon_prompt.h"
#include "windows/prompts/rival_prompt.h"
#include "windows/settings/settings_window.h"

namespace nimbletype {

struct AppWindows::Windows {
  Windows(const SystemSettings& settings, const WindowDesktop& desktop) : menu(settings, desktop) {}
  QtMenuPanel menu;
  std::unique_ptr<SettingsWindow> settingsWindow;
  std::unique_ptr<RivalPrompt> rivals;
  std::unique_ptr<HiddenIconPrompt> hiddenIcon;
  std::unique_ptr<PromptWindow> news;
  std::unique_ptr<PlaygroundWindow> playground;
};

AppWindows::AppWindows(AppModel& model, SystemSettings& settings, const WindowDesktop& desktop)
    : model_(model),
      settings_(settings),
      desktop_(desktop),
      isDarkWithoutWord_(QApplication::palette().color(QPalette::Window).lightness() < 128),
      windows_(std::make_unique<Windows>(settings, desktop)) {
  if (!onMac)
    QApplication::setWindowIcon(statusPicture({.symbol = "pencil.and.scribble", .title = {}, .toolTip = {}}));
  settings_.onChange([this] { follow(); });
  follow();
}

AppWindows::~AppWindows() {
  settings_.onChange({});
}

void AppWindows::follow() {
  wear(*qApp, lookFor(settings_.prefersDark().value_or(isDarkWithoutWord_)));
}

MenuPanel& AppWindows::menuPanel() {
  return windows_->menu;
}

// As in the menu, while one of the windows is in front.
void AppWindows::addShortcuts(QWidget& window) {
  const auto add = [&window](const char* keys, std::function<void()> chosen) {
    auto* shortcut =
        new QShortcut(QKeySequence(QString::fromLatin1(keys), QKeySequence::PortableText), &window);
    QObject::connect(shortcut, &QShortcut::activated, &window, std::move(chosen));
  };
  add("Ctrl+,", [this] { openSettings({}); });
  add("Ctrl+Q", model_.ports().quit);
}

void AppWindows::openSettings(const std::string&) {
  if (!windows_->settingsWindow) {
    windows_->settingsWindow = std::make_unique<SettingsWindow>(
        SettingsWindow::Services{model_.preferences(), model_.launchAtLogin(), model_.permissions()});
    addShortcuts(*windows_->settingsWindow);
  }
  desktop_.activate();
  windows_->settingsWindow->present();
}

void AppWindows::openPlayground() {
  if (!windows_->playground) {
    windows_->playground = std::make_unique<PlaygroundWindow>(model_.source(), model_.preferences(),
                                                              model_.ports().bundleIdentifier);
    addShortcuts(*windows_->playground);
  }
  desktop_.activate();
  windows_->playground->present();
}

void AppWindows::playIntro() {
  openPlayground();
}

void AppWindows::openRivalPrompt() {
  if (!windows_->rivals)
    windows_->rivals = std::make_unique<RivalPrompt>(model_.rivals(), model_.preferences());
  windows_->rivals->present();
}

void AppWindows::openHiddenIconPrompt() {
  if (!windows_->hiddenIcon) {
    HiddenIconPrompt::Ways ways{.openSystemSettings = {},
                                .openSettings = [this] { openSettings({}); },
                                .remindNoMore = [this] { model_.preferences().remindHiddenIcon.set(false); }};
    if (onMac) ways.openSystemSettings = [this] { model_.permissions().openControlCentreSettings(); };
    windows_->hiddenIcon = std::make_unique<HiddenIconPrompt>(ways);
  }
  const auto hiders = model_.menuBarHiders().runningHiders();
  windows_->hiddenIcon->blame(hiders.empty() ? std::string() : hiders.front().appName);
  windows_->hiddenIcon->present();
}

void AppWindows::closeHiddenIconPrompt() {
  if (windows_->hiddenIcon) windows_->hiddenIcon->close();
}

void AppWindows::tell(const std::string& title, const std::string& message) {
  if (!windows_->news) {
    windows_->news = std::make_unique<PromptWindow>("pencil.and.scribble");
    windows_->news->addButton("Done", "chief", [this] { windows_->news->close(); });
  }
  windows_->news->setTexts(QString::fromStdString(title).trimmed(), QString::fromStdString(message));
  windows_->news->present();
}

void AppWindows::closeAll() {
  windows_->menu.close();
  windows_->settingsWindow.reset();
  windows_->playground.reset();
  windows_->rivals.reset();
  windows_->hiddenIcon.reset();
  windows_->news.reset();
}

}  // namespace nimbletype
