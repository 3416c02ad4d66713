#include "core/completion/deciding/gates.h"

#include "input/keys/key_combo_display.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr double smallestWidth = 140, smallestHeight = 15;  // points
constexpr std::size_t fewestCharacters = 3;
constexpr const char *selectionText = "Text is selected", *smallFieldText = "This field is too small";

std::optional<std::string> appGate(const FieldSnapshot& snapshot, const GateState& state) {
  if (!state.isEnabled) return "Nimbletype is turned off";
  if (!state.rival.empty()) return "Paused while " + state.rival + " is open";
  if (!state.decision.enabled) return state.decision.reason;
  if (state.secureInput || snapshot.isSecure) return "Secure input is on, so Nimbletype stays out";
  return std::nullopt;
}

// Our own practice field is as small as its window makes it.
bool isTooSmall(const FieldSnapshot& snapshot) {
  return !snapshot.isLocal && snapshot.fieldFrame &&
         (snapshot.fieldFrame->width < smallestWidth || snapshot.fieldFrame->height < smallestHeight);
}

// After a finished line the next one may well be guessed, such as the sentence after a greeting.
bool startsUnannouncedLine(const FieldSnapshot& snapshot) {
  return text::isLineBreak(text::lastCharacter(snapshot.before)) && !snapshot.followsFinishedLine();
}

bool hasFewCharacters(const FieldSnapshot& snapshot) {
  return text::characterCount(text::firstCharacters(text::trimmed(snapshot.before), fewestCharacters)) <
         fewestCharacters;
}

std::string onDemandText(const std::optional<KeyCombo>& triggerKey) {
  return "Press " + (triggerKey ? displayName(*triggerKey) : "the trigger shortcut") + " for a suggestion";
}

std::optional<std::string> fieldGate(const FieldSnapshot& snapshot, const GateState& state) {
  if (snapshot.selectionLength >= 1) return selectionText;
  if (!state.completeInsideText && !text::isBlank(snapshot.restOfLine()))
    return "The caret is inside existing text";
  if (!state.ignoreSmallFields && isTooSmall(snapshot)) return smallFieldText;
  if (hasFewCharacters(snapshot)) return "Waiting for a few characters";
  if (startsUnannouncedLine(snapshot)) return "Start of a new line";
  if (state.onDemand && !state.forced) return onDemandText(state.triggerKey);
  return std::nullopt;
}

}  // namespace

std::optional<std::string> firstGate(const FieldSnapshot& snapshot, const GateState& state) {
  if (auto reason = appGate(snapshot, state)) return reason;
  return fieldGate(snapshot, state);
}

std::optional<std::string> emojiGate(const FieldSnapshot& snapshot, const GateState& state) {
  if (auto reason = appGate(snapshot, state)) return reason;
  if (snapshot.selectionLength >= 1) return selectionText;
  if (!state.ignoreSmallFields && isTooSmall(snapshot)) return smallFieldText;
  return std::nullopt;
}

}  // namespace nimbletype
