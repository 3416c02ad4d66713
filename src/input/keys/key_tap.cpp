#include "input/keys/key_tap.h"

namespace nimbletype {

namespace {
bool isLogged(std::uint16_t keyCode) {
  return keyCode == key::tab || keyCode == key::aboveTab || keyCode == key::escape;
}
}  // namespace

std::string keyLogLine(const KeyPress& press, bool used) {
  if (!isLogged(press.keyCode)) return {};
  return "key " + std::to_string(press.keyCode) + " mods " + std::to_string(press.modifiers.rawValue) +
         " used " + (used ? "true" : "false");
}

bool KeyTap::start() {
  if (tap_.isRunning()) return true;
  return tap_.start([this](const TapEvent& event) { return handle(event); });
}

void KeyTap::stop() {
  if (tap_.isRunning()) tap_.stop();
}

bool KeyTap::handle(const TapEvent& event) {
  const bool used = handler_ && handler_(event);
  const auto* press = std::get_if<KeyPress>(&event);
  // The line is only built for the three keys it is for: other keys cost nothing here.
  if (press && isLogged(press->keyCode)) log_.log("input", keyLogLine(*press, used));
  return used;
}

}  // namespace nimbletype
