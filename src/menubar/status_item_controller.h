#pragma once
#include "core/settings/preferences.h"
#include "menubar/menu_bar_hiders.h"
#include "menubar/menu_panel.h"
#include "platform/desktop/status_bar.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The item in the menu bar and the menu under it. Main thread only.
class StatusItemController {
 public:
  struct Services {
    StatusBar& bar;
    MenuPanel& panel;
    MainLoop& loop;
    const Preferences& prefs;
  };
  // What the menu tells of and what its rows do.
  struct Menu {
    std::function<MenuState()> state;
    std::function<void(MenuAction)> act;
    std::function<void()> opening;  // before the menu shows
  };
  // A click that closes the panel from outside may as well be the one on the item.
  static constexpr Milliseconds sameClick{300};

  StatusItemController(const Services& services, Menu menu);
  ~StatusItemController();
  StatusItemController(const StatusItemController&) = delete;
  StatusItemController& operator=(const StatusItemController&) = delete;

  // Puts the item up, or takes it away where the user wants none.
  void installItem();
  // Something that the item or its menu shows has changed: follows in the loop's next turn.
  void refreshItem();
  void toggleMenu();
  void closeMenu();
  // For quitting.
  void removeItem();

 private:
  void refreshNow();
  void openMenu();
  void chosen(MenuAction action);

  Services s_;
  Menu menu_;
  bool isInstalled_ = false, areChoicesUnfolded_ = false;
  std::optional<StatusIcon> shown_;  // drawing it anew costs panels more than us
  std::optional<MonotonicTime> dismissed_;
  Task refresh_;
};

}  // namespace nimbletype
