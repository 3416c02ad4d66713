#pragma once
#include <memory>

#include "core/app/window_manager.h"
#include "platform/system/system_settings.h"

class QWidget;

namespace nimbletype {

class AppModel;

// All windows, each made when it is first opened and kept from then on. Needs a QApplication.
class AppWindows final : public WindowManager {
 public:
  // The model need not be complete before the first window opens. `mixesWindows` tells whether windows may be
  // partly transparent.
  AppWindows(AppModel& model, SystemSettings& settings, std::function<bool()> mixesWindows);
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
  bool isDarkWithoutWord_;  // what Qt found, which counts where the desktop says nothing
  std::unique_ptr<Windows> windows_;
};

}  // namespace nimbletype
