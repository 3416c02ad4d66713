#pragma once
#include <algorithm>
#include <span>
#include <vector>

#include "platform/keys/event_tap.h"

namespace nimbletype {

// A tap whose user is the script: it presses keys and learns whether they were swallowed.
class ScriptedEventTap : public EventTap {
 public:
  bool start(Handler handler) override;
  void stop() override;
  bool isRunning() const override { return running_; }
  void setTakeable(std::span<const KeyCombo> shown) override { takeable_.assign(shown.begin(), shown.end()); }
  void setShortcuts(std::span<const KeyCombo> combos) override {
    shortcuts_.assign(combos.begin(), combos.end());
  }

  // True when the press was swallowed: only keys declared takeable or as shortcuts can be.
  bool press(const KeyPress& press);
  void pointer();
  // The desktop ends the tap by itself.
  void takeAway() { running_ = false; }
  // Any event, as if all keys could be taken; true when the handler takes it.
  bool send(const TapEvent& event) { return running_ && handler_(event); }
  // An event the application posted itself: never shown to the handler, never swallowed.
  bool ownPress(const KeyPress&) { return false; }

  const std::vector<KeyCombo>& takeable() const { return takeable_; }
  const std::vector<KeyCombo>& shortcuts() const { return shortcuts_; }
  bool allowed = true;  // whether the desktop lets the tap start

 private:
  Handler handler_;
  std::vector<KeyCombo> takeable_, shortcuts_;
  bool running_ = false;
};

}  // namespace nimbletype
