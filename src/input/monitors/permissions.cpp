#include "input/monitors/permissions.h"

#include "platform/system/beat.h"

namespace nimbletype {

namespace {

const std::string securitySettings = "x-apple.systempreferences:com.apple.preference.security?";
constexpr std::string_view keyboardSettings =
    "x-apple.systempreferences:com.apple.Keyboard-Settings.extension";
constexpr std::string_view controlCentreSettings =
    "x-apple.systempreferences:com.apple.ControlCenter-Settings.extension";

}  // namespace

Permissions::Permissions(PermissionSource& source, SystemSettings& settings, MainLoop& loop)
    : source_(source), settings_(settings), loop_(loop) {
  state_ = read();
  state_.accessibilityGrantedAt.reset();
  source_.onTrustChange([this] { trustMayHaveChanged(); });
  lookAgain();
}

Permissions::~Permissions() {
  source_.onTrustChange({});
}

Permissions::State Permissions::read() const {
  State now = state_;
  now.accessibility = source_.isTrusted();
  now.screenRecording = source_.canRecordScreen();
  now.systemPredictionsOn = settings_.predictionsOn();
  now.accessibilityLooksStuck = looksStuck(now.accessibility);
  if (!now.accessibility) now.accessibilityGrantedAt.reset();
  if (now.accessibility && !state_.accessibility) now.accessibilityGrantedAt = loop_.wallNow();
  return now;
}

bool Permissions::looksStuck(bool trusted) const {
  return !trusted && requested_ && loop_.now() - *requested_ >= stuckAfter;
}

void Permissions::refresh() {
  change(read());
  lookAgain();
}

// The desktop may tell of a change before it can be read.
void Permissions::trustMayHaveChanged() {
  change(read());
  lookAgain(awaitingInterval);
}

void Permissions::change(State state) {
  if (state == state_) return;
  const bool granted = state.accessibility && !state_.accessibility;
  if (state.accessibility) requested_.reset();
  state_ = state;
  observers_.notify();
  if (granted && onAccessibilityGranted_) onAccessibilityGranted_();
}

void Permissions::lookAgain(Milliseconds interval) {
  timer_ = loop_.after(untilBeat(loop_, interval), [this] { refresh(); });
}

void Permissions::lookAgain() {
  lookAgain(state_.accessibility ? grantedInterval : awaitingInterval);
}

void Permissions::askForAccessibility() {
  requested_ = loop_.now();
  State asked = state_;
  asked.accessibilityRequestedAt = loop_.wallNow();
  asked.accessibilityLooksStuck = false;
  change(asked);
  source_.askForTrust();
  refresh();
  if (!accessibility()) source_.openSettings(securitySettings + "Privacy_Accessibility");
}

void Permissions::askForScreenRecording() {
  if (!source_.canRecordScreen() && !source_.askForScreenRecording())
    source_.openSettings(securitySettings + "Privacy_ScreenCapture");
  refresh();
}

void Permissions::switchSystemPredictionsOff() {
  settings_.switchPredictionsOff();
  refresh();
}

void Permissions::openKeyboardSettings() {
  source_.openSettings(keyboardSettings);
}

void Permissions::openControlCentreSettings() {
  source_.openSettings(controlCentreSettings);
}

}  // namespace nimbletype
