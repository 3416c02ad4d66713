#pragma once
#include "core/settings/preferences.h"
#include "menubar/menu_bar_hiders.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Looks whether the icon can be seen, once the menu bar has had the time to take it in.
class HiddenIconCheck {
 public:
  // Trays come up after the programs that a login starts.
  static constexpr Milliseconds settling{10'000};

  HiddenIconCheck(const MenuBarHiders& hiders, const Preferences& prefs, MainLoop& loop,
                  std::function<void()> isHidden)
      : hiders_(hiders), prefs_(prefs), loop_(loop), isHidden_(std::move(isHidden)) {}

  // The icon was put up or taken away.
  void installed() {
    check_ = loop_.after(settling, [this] {
      const bool isWanted = prefs_.showMenuBarIcon.get() && prefs_.remindHiddenIcon.get();
      if (isWanted && !hiders_.isStatusIconVisible()) isHidden_();
    });
  }
  void cancel() { check_.cancel(); }

 private:
  const MenuBarHiders& hiders_;
  const Preferences& prefs_;
  MainLoop& loop_;
  std::function<void()> isHidden_;
  Task check_;
};

}  // namespace nimbletype
