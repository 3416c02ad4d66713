#pragma once
#include <optional>
#include <string>

#include "core/rules/app_rules.h"
#include "input/field/field_snapshot.h"
#include "platform/keys/keys.h"

namespace nimbletype {

// Everything besides the snapshot that may forbid a suggestion.
struct GateState {
  bool isEnabled = true;
  std::string rival{};  // one that runs, by name
  RuleDecision decision;
  bool secureInput = false;
  bool completeInsideText = false;
  bool ignoreSmallFields = false;
  bool onDemand = false;  // the setting, or battery mode
  bool forced = false;    // Suggest Now was pressed
  std::optional<KeyCombo> triggerKey;
};

// The text of the first gate that forbids a suggestion here; none when one may be made.
std::optional<std::string> firstGate(const FieldSnapshot& snapshot, const GateState& state);

// The same for an emoji, which is asked for by what is typed: it may come in a short text, inside a line, and
// where suggestions come on demand.
std::optional<std::string> emojiGate(const FieldSnapshot& snapshot, const GateState& state);

}  // namespace nimbletype
