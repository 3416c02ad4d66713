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

  // `tell` is called with true when the icon is hidden, and with false once it can be seen after all.
  HiddenIconCheck(const MenuBarHiders& hiders, const Preferences& prefs, MainLoop& loop,
                  std::function<void(bool isHidden)> tell)
      : hiders_(hiders), prefs_(prefs), loop_(loop), tell_(std::move(tell)) {}

  // The icon was put up or taken away.
  void installed() {
    check_ = loop_.after(settling, [this] {
      const bool isWanted = prefs_.showMenuBarIcon.get() && prefs_.remindHiddenIcon.get();
      if (!isWanted || hiders_.isStatusIconVisible()) return;
      hasTold_ = true;
      tell_(true);
    });
  }
  // The bar took the icon in, or lost it.
  void placeChanged() {
    if (hasTold_ && hiders_.isStatusIconVisible()) {
      hasTold_ = false;
      tell_(false);
    }
  }
  void cancel() { check_.cancel(); }

 private:
  const MenuBarHiders& hiders_;
  const Preferences& prefs_;
  MainLoop& loop_;
  std::function<void(bool)> tell_;
  bool hasTold_ = false;
  Task check_;
};

}  // namespace nimbletype
