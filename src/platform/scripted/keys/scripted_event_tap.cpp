#include "platform/scripted/keys/scripted_event_tap.h"

namespace nimbletype {

bool ScriptedEventTap::start(Handler handler) {
  if (running_) return true;
  if (!allowed) return false;
  handler_ = std::move(handler);
  return running_ = true;
}

void ScriptedEventTap::stop() {
  running_ = false;
  handler_ = nullptr;
}

bool ScriptedEventTap::press(const KeyPress& press) {
  if (!running_) return false;
  const auto has = [&](const std::vector<KeyCombo>& combos) {
    return std::ranges::count(combos, press.combo()) > 0;
  };
  const bool canBeTaken = has(takeable_) || has(shortcuts_);
  return handler_(TapEvent(press)) && canBeTaken;
}

void ScriptedEventTap::pointer() {
  if (running_) handler_(PointerPress{});
}

}  // namespace nimbletype
