#pragma once
#include "core/completion/deciding/gates.h"
#include "core/settings/preferences.h"
#include "input/monitors/power_monitor.h"
#include "platform/keys/secure_input.h"
#include "platform/system/observable.h"

namespace nimbletype {

// Looks at the settings, the rules and the desktop to tell which gate holds for a field.
class GateKeeper {
 public:
  struct Services {
    const Preferences& prefs;
    const AppRules& rules;
    const SecureInput& secureInput;
    const PowerMonitor& power;
    const Observable<std::string>& rival;  // the name of one that runs, or empty
  };
  // What the engine knows of this field besides.
  struct Occasion {
    bool forced = false;           // asked for by hand, or what was asked for is shown
    bool insideInsertion = false;  // what stands after the caret is our own text, on its way
  };

  explicit GateKeeper(const Services& services) : s_(services) {}

  // Looks the decision for the field's application or site up anew.
  GateState state(const FieldSnapshot& snapshot, Occasion occasion);
  std::optional<std::string> firstGate(const FieldSnapshot& snapshot, Occasion occasion) {
    return nimbletype::firstGate(snapshot, state(snapshot, occasion));
  }
  // For the field looked at last.
  const Observable<RuleDecision>& decision() const { return decision_; }

  // Whatever may open or close a gate has changed.
  [[nodiscard]] std::vector<Task> observe(const std::function<void()>& changed);

 private:
  Services s_;
  Observable<RuleDecision> decision_;
};

}  // namespace nimbletype
