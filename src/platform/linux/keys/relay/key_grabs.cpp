#include "platform/linux/keys/relay/key_grabs.h"

#include <algorithm>

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

namespace {

constexpr int mostFocusMoves = 8;  // while we look; after that the next event tells

void selectEvents(xcb_connection_t* connection, xcb_window_t window, std::uint32_t mask) {
  xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &mask);
}

bool has(std::span<const KeyCombo> combos, const KeyCombo& combo) {
  return std::ranges::count(combos, combo) > 0;
}

}  // namespace

KeyGrabs::KeyGrabs(xcb_connection_t* connection, xcb_window_t root)
    : connection_(connection), root_(root), modifiers_(X11Modifiers::read(connection)) {
  // The root hears when the focus leaves "no window" or "the window under the pointer".
  selectEvents(connection_, root_, XCB_EVENT_MASK_FOCUS_CHANGE);
  followFocus();
}

void KeyGrabs::setTakeable(std::span<const KeyCombo> combos) {
  change(focus_, takeable_, combos);
}

void KeyGrabs::setShortcuts(std::span<const KeyCombo> combos) {
  change(root_, shortcuts_, combos);
}

void KeyGrabs::followFocus() {
  for (int i = 0; i < mostFocusMoves; ++i) {
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    // Only once we watch the window that has it can the focus not move unseen.
    if (!focus || focus->focus == focus_) return;
    moveTo(focus->focus);
  }
}

void KeyGrabs::moveTo(xcb_window_t window) {
  if (isRealWindow(focus_)) {
    for (const KeyCombo& combo : takeable_) ungrab(focus_, combo);
    if (focus_ != root_) selectEvents(connection_, focus_, XCB_EVENT_MASK_NO_EVENT);
  }
  focus_ = window;
  if (!isRealWindow(focus_)) return;
  if (focus_ != root_)
    selectEvents(connection_, focus_, XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  for (const KeyCombo& combo : takeable_) grab(focus_, combo);
}

void KeyGrabs::refreshModifiers() {
  const X11Modifiers now = X11Modifiers::read(connection_);
  if (now.command == modifiers_.command && now.option == modifiers_.option &&
      now.numLock == modifiers_.numLock)
    return;
  const Combos takeable = takeable_, shortcuts = shortcuts_;
  setTakeable({});
  setShortcuts({});
  modifiers_ = now;
  setTakeable(takeable);
  setShortcuts(shortcuts);
}

bool KeyGrabs::covers(const KeyCombo& combo) const {
  return has(takeable_, combo) || has(shortcuts_, combo);
}

// New grabs come first and those that stay are never let go, so that no key slips through in between.
void KeyGrabs::change(xcb_window_t window, Combos& from, std::span<const KeyCombo> to) {
  if (isRealWindow(window)) {
    for (const KeyCombo& combo : to)
      if (!has(from, combo)) grab(window, combo);
    for (const KeyCombo& combo : from)
      if (!has(to, combo)) ungrab(window, combo);
  }
  from.assign(to.begin(), to.end());
}

// Fails, unnoticed, where another application holds the same combination: then it is not ours to take.
void KeyGrabs::grab(xcb_window_t window, const KeyCombo& combo) {
  const auto keycode = xKeycode(combo.keyCode);
  if (!keycode) return;
  for (std::uint16_t state : modifiers_.lockVariants(modifiers_.mask(combo.modifiers)))
    xcb_grab_key(connection_, 0, window, state, *keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
}

void KeyGrabs::ungrab(xcb_window_t window, const KeyCombo& combo) {
  const auto keycode = xKeycode(combo.keyCode);
  if (!keycode) return;
  for (std::uint16_t state : modifiers_.lockVariants(modifiers_.mask(combo.modifiers)))
    xcb_ungrab_key(connection_, *keycode, window, state);
}

}  // namespace nimbletype
