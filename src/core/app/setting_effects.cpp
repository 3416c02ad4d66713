#include "core/app/setting_effects.h"

#include <initializer_list>

namespace nimbletype {
namespace {

struct Effect {
  const AnySetting& setting;
  const std::function<void()>& effect;
};

}  // namespace

std::vector<Task> follow(const Preferences& prefs, const SettingEffects& effects) {
  const std::initializer_list<Effect> list = {
      {prefs.engine, effects.engineChosen},          {prefs.ollamaURL, effects.engineChosen},
      {prefs.ollamaModel, effects.engineChosen},     {prefs.acceptWordKey, effects.keysChanged},
      {prefs.acceptAllKey, effects.keysChanged},     {prefs.triggerKey, effects.keysChanged},
      {prefs.alternativesKey, effects.keysChanged},  {prefs.toggleAppKey, effects.keysChanged},
      {prefs.toggleGlobalKey, effects.keysChanged},  {prefs.memoryEnabled, effects.memorySwitched},
      {prefs.showMenuBarIcon, effects.iconSwitched}, {prefs.showWordCountInMenuBar, effects.countSwitched},
  };
  std::vector<Task> tasks;
  for (const auto& [setting, effect] : list)
    if (effect) tasks.push_back(setting.observe(effect));
  return tasks;
}

}  // namespace nimbletype
