#pragma once
#include <memory>

#include "menubar/menu_panel.h"
#include "platform/system/system_settings.h"
#include "windows/kit/window_desktop.h"

namespace nimbletype {

// The menu as a window of Qt, made when it is first opened.
class QtMenuPanel final : public MenuPanel {
 public:
  QtMenuPanel(const SystemSettings& settings, WindowDesktop desktop);
  ~QtMenuPanel() override;

  void open(const MenuContent& content, const std::optional<BottomLeftRect>& item) override;
  void update(const MenuContent& content) override;
  void close() override;
  bool isOpen() const override;
  void onChosen(std::function<void(MenuAction)> chosen) override { chosen_ = std::move(chosen); }
  void onDismissed(std::function<void()> dismissed) override { dismissed_ = std::move(dismissed); }

 private:
  class Window;
  const SystemSettings& settings_;
  WindowDesktop desktop_;
  std::function<void(MenuAction)> chosen_;
  std::function<void()> dismissed_;
  std::unique_ptr<Window> window_;
};

}  // namespace nimbletype
