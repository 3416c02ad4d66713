#pragma once
#include <functional>
#include <optional>
#include <set>
#include <string>

#include "platform/system/main_loop.h"
#include "platform/system/observers.h"
#include "platform/system/permission_source.h"
#include "platform/system/system_settings.h"

namespace nimbletype {

// What the application may do, followed as it changes. Main thread only.
class Permissions {
 public:
  // How often the desktop is looked at: while access is awaited, and afterwards, when it may be taken back.
  static constexpr Milliseconds awaitingInterval{1'000}, grantedInterval{30'000};
  // A request that has brought no access for so long has gone wrong: the desktop shows the application as
  // allowed, but means another copy of it.
  static constexpr Milliseconds stuckAfter{30'000};

  Permissions(PermissionSource& source, SystemSettings& settings, MainLoop& loop);
  Permissions(const Permissions&) = delete;
  Permissions& operator=(const Permissions&) = delete;
  ~Permissions();

  bool accessibility() const { return state_.accessibility; }
  bool screenRecording() const { return state_.screenRecording; }
  // None where the desktop does not predict words.
  std::optional<bool> systemPredictionsOn() const { return state_.systemPredictionsOn; }
  bool accessibilityLooksStuck() const { return state_.accessibilityLooksStuck; }
  // When access was seen to be granted; none when it was there from the start.
  std::optional<WallTime> accessibilityGrantedAt() const { return state_.accessibilityGrantedAt; }
  std::optional<WallTime> accessibilityRequestedAt() const { return state_.accessibilityRequestedAt; }

  // Told of real changes of the above only, until the task is destroyed.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }
  // Called whenever access turns from missing to granted, after everybody who observes.
  void onAccessibilityGranted(std::function<void()> granted) { onAccessibilityGranted_ = std::move(granted); }

  // Asks the user through the desktop, and shows where to allow it.
  void askForAccessibility();
  void askForScreenRecording();
  void switchSystemPredictionsOff();
  void openKeyboardSettings();
  void openControlCentreSettings();
  // Whether this message of a grant is to be shown now: each is, once.
  bool celebrate(const std::string& message) { return celebrated_.insert(message).second; }
  // Looks at the desktop now, rather than in a while.
  void refresh();

 private:
  struct State {
    bool accessibility = false, screenRecording = false, accessibilityLooksStuck = false;
    std::optional<bool> systemPredictionsOn;
    std::optional<WallTime> accessibilityGrantedAt, accessibilityRequestedAt;
    bool operator==(const State&) const = default;
  };

  State read() const;
  bool looksStuck(bool trusted) const;
  void change(State state);
  void trustMayHaveChanged();
  void lookAgain();
  void lookAgain(Milliseconds interval);

  PermissionSource& source_;
  SystemSettings& settings_;
  MainLoop& loop_;
  State state_;
  std::optional<MonotonicTime> requested_;  // the wall clock may be set meanwhile
  std::set<std::string> celebrated_;
  std::function<void()> onAccessibilityGranted_;
  Observers observers_;
  Task timer_;
};

}  // namespace nimbletype
