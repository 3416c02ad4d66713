#include "core/completion/deciding/gate_keeper.h"

#include <initializer_list>

namespace nimbletype {

GateState GateKeeper::state(const FieldSnapshot& snapshot, Occasion occasion) {
  decision_.set(s_.rules.decision(snapshot.bundleID, snapshot.appName, snapshot.domain));
  const Preferences& prefs = s_.prefs;
  return {prefs.isEnabled.get(),
          s_.rival.get(),
          decision_.get(),
          s_.secureInput.isOn(),
          prefs.completeInsideText.get() || occasion.insideInsertion,
          prefs.ignoreSmallFields.get(),
          prefs.onDemandOnly.get() || (prefs.batteryOnDemand.get() && s_.power.onBattery()),
          occasion.forced,
          prefs.triggerKey.get()};
}

std::vector<Task> GateKeeper::observe(const std::function<void()>& changed) {
  std::vector<Task> observations;
  observations.push_back(s_.rules.observe(changed));
  const Preferences& prefs = s_.prefs;
  const std::initializer_list<const AnySetting*> settings = {
      &prefs.isEnabled,         &prefs.enabledByDefault, &prefs.codeEditorsEnabled, &prefs.completeInsideText,
      &prefs.ignoreSmallFields, &prefs.onDemandOnly,     &prefs.batteryOnDemand,    &prefs.triggerKey,
      &prefs.insertion,         &prefs.length,           &prefs.emojiEnabled,       &prefs.emoticons};
  for (const AnySetting* setting : settings) observations.push_back(setting->observe(changed));
  observations.push_back(s_.power.observe(changed));
  observations.push_back(s_.rival.observe(changed));
  return observations;
}

}  // namespace nimbletype
