#pragma once
#include <string>
#include <vector>

#include "platform/keys/keys.h"
#include "platform/linux/keys/x11_keymap.h"
#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

// A small application: a window with the input focus that notes the keys it receives. As real ones do, it
// looks up what a key means when it comes to its event.
class KeyWindow {
 public:
  explicit KeyWindow(const std::string& display);  // returns once the window has the focus

  // Readable when something has arrived.
  int descriptor() const { return xcb_get_file_descriptor(connection_.get()); }
  // Takes what has arrived.
  void read();
  // Whether somebody holds this key on the window.
  bool isGrabbed(const KeyCombo& combo) { return isGrabbed(window_, combo); }
  bool isGrabbedOnRoot(const KeyCombo& combo) { return isGrabbed(rootWindow(connection_.get()), combo); }
  void takeFocus();
  // Gives the key another meaning, for the whole display.
  void nameKey(std::uint16_t keyCode, xcb_keysym_t symbol);

  std::vector<KeyCombo> keys;  // without the presses of modifier keys
  std::string text;
  int focusChanges = 0;

 private:
  bool isGrabbed(xcb_window_t window, const KeyCombo& combo);
  void onKey(const xcb_key_press_event_t& press);

  XcbConnection connection_;
  X11Modifiers modifiers_;
  xcb_window_t window_;
};

}  // namespace nimbletype
