#pragma once
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/keys/keys.h"
#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

// Plays the user: presses keys and buttons on the display's own keyboard and mouse, not on the devices that
// stand for programs. Every call returns once the server has taken the events.
class UserKeyboard {
 public:
  explicit UserKeyboard(const std::string& display = {});  // throws when there are no such devices

  void down(std::uint16_t keyCode) { key(keyCode, true); }
  void up(std::uint16_t keyCode) { key(keyCode, false); }
  void hold(ModifierSet modifiers) { modifierKeys(modifiers, true); }
  void release(ModifierSet modifiers) { modifierKeys(modifiers, false); }
  // Down and up, with the modifiers held around it.
  void press(std::uint16_t keyCode, ModifierSet modifiers = {});
  // Characters of the active layout; throws at any other.
  void type(std::string_view text);
  // When the last key went down.
  std::chrono::steady_clock::time_point lastPress() const { return lastPress_; }

  void movePointer(int x, int y);
  void click(std::uint8_t button = 1);
  // The mouse of a virtual display has no wheel: this is the one device that stands for programs.
  void scroll(bool up);

 private:
  void key(std::uint16_t keyCode, bool down);
  void modifierKeys(ModifierSet modifiers, bool down);
  void fake(std::uint8_t deviceEvent, std::uint8_t detail, std::uint8_t device);

  XcbConnection connection_;
  std::uint8_t firstDeviceEvent_ = 0, keyboard_ = 0, mouse_ = 0;
  std::chrono::steady_clock::time_point lastPress_;
};

}  // namespace nimbletype
