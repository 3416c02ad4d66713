#pragma once
#include <functional>
#include <span>
#include <string>

#include "platform/keys/event_tap.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// The line that tells what became of one of the keys that accept or dismiss a suggestion; empty for others.
std::string keyLogLine(const KeyPress& press, bool used);

// The system-wide key tap as the product uses it: asks one handler about every event and obeys its answer.
// Events this process posts itself never reach it. Main thread only.
class KeyTap {
 public:
  // True swallows the event. Must answer quickly and wait for nothing.
  using Handler = std::function<bool(const TapEvent&)>;

  KeyTap(EventTap& tap, SystemLog& log) : tap_(tap), log_(log) {}
  KeyTap(const KeyTap&) = delete;
  KeyTap& operator=(const KeyTap&) = delete;
  ~KeyTap() { stop(); }

  // False when the desktop does not allow it. Starting while running succeeds at once.
  bool start();
  void stop();
  bool isRunning() const { return tap_.isRunning(); }

  // Without a handler every event passes on.
  void setHandler(Handler handler) { handler_ = std::move(handler); }
  void setTakeable(std::span<const KeyCombo> shown) { tap_.setTakeable(shown); }
  void setShortcuts(std::span<const KeyCombo> shortcuts) { tap_.setShortcuts(shortcuts); }

 private:
  bool handle(const TapEvent& event);

  EventTap& tap_;
  SystemLog& log_;
  Handler handler_;
};

}  // namespace nimbletype
