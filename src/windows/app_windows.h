#pragma once
#include <memory>

#include "core/app/window_manager.h"
#include "platform/system/system_settings.h"
#include "windows/kit/window_desktop.h"

class QWidget;

namespace nimbletype {

class AppModel;

// All windows, each made when it is first opened and kept from then on. Needs a QApplication.
class AppWindows final : public WindowManager {
 public:
  // The model need not be complete before the first window opens.
  AppWindows(AppModel& model, SystemSettings& settings, const WindowDesktop& desktop);
  ~AppWindows() override;

  MenuPanel& menuPanel() override;
  void openSettings(const std::string& pane) override;
  void openPlayground() override;
  void playIntro() override;
  void openRivalPrompt() override;
  void openHiddenIconPrompt() override;
  void closeHiddenIconPrompt() override;
  void tell(const std::string& title, const std::string& message) override;
  // And forgets what they showed.
  void closeAll() override;

 private:
  struct Windows;
  void follow();
  void addShortcuts(QWidget& window);

  AppModel& model_;
  SystemSettings& settings_;
  WindowDesktop desktop_;
  bool isDarkWithoutWord_;  // what Qt found, which counts where the desktop says nothing
  std::unique_ptr<Windows> windows_;
};

}  // namespace nimbletype
