#pragma once
#include <functional>
#include <vector>

#include "core/settings/preferences.h"

namespace nimbletype {

// What a service has to do anew when a setting changes. Whatever is read afresh at each use needs no effect.
struct SettingEffects {
  std::function<void()> engineChosen{};  // another engine, or another address or model of it
  std::function<void()> keysChanged{};   // a shortcut
  std::function<void()> memorySwitched{};
  std::function<void()> iconSwitched{};
  std::function<void()> countSwitched{};
};

// The one list of which setting has which effect, in force until the tasks are destroyed.
[[nodiscard]] std::vector<Task> follow(const Preferences& prefs, const SettingEffects& effects);

}  // namespace nimbletype
