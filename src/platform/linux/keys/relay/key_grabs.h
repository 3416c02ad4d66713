#pragma once
#include <xcb/xcb.h>

#include <span>
#include <vector>

#include "platform/keys/keys.h"
#include "platform/linux/keys/x11_keymap.h"

namespace nimbletype {

// Keeps the right keys grabbed on the right windows: what something is shown for on the window that has the
// input focus (a grab on the root makes applications believe they lost the focus at every such key), the
// global shortcuts on the root. Follows the focus.
class KeyGrabs {
 public:
  KeyGrabs(xcb_connection_t* connection, xcb_window_t root);

  void setTakeable(std::span<const KeyCombo> combos);
  void setShortcuts(std::span<const KeyCombo> combos);
  // Looks where the focus is now and watches for its next move.
  void followFocus();
  void refreshModifiers();

  bool covers(const KeyCombo& combo) const;
  const X11Modifiers& modifiers() const { return modifiers_; }

 private:
  using Combos = std::vector<KeyCombo>;
  void grab(xcb_window_t window, const KeyCombo& combo);
  void ungrab(xcb_window_t window, const KeyCombo& combo);
  void change(xcb_window_t window, Combos& from, std::span<const KeyCombo> to);
  void moveTo(xcb_window_t window);
  bool isRealWindow(xcb_window_t window) const { return window > XCB_INPUT_FOCUS_POINTER_ROOT; }

  xcb_connection_t* connection_;
  xcb_window_t root_, focus_ = XCB_NONE;
  X11Modifiers modifiers_;
  Combos takeable_, shortcuts_;
};

}  // namespace nimbletype
