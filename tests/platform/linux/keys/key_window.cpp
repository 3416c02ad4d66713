#include "tests/platform/linux/keys/key_window.h"

#include <xkbcommon/xkbcommon.h>

#include <stdexcept>

#include "text/text.h"

namespace nimbletype {

namespace {

bool isModifierKey(xcb_keysym_t symbol) {
  return (symbol >= XKB_KEY_Shift_L && symbol <= XKB_KEY_Hyper_R) || symbol == XKB_KEY_ISO_Level3_Shift;
}

// What the key means now, with Shift and the third level looked at and Caps Lock for letters.
xcb_keysym_t symbolOf(xcb_connection_t* connection, xcb_keycode_t key, std::uint16_t state) {
  const XcbReply<xcb_get_keyboard_mapping_reply_t> map(
      xcb_get_keyboard_mapping_reply(connection, xcb_get_keyboard_mapping(connection, key, 1), nullptr));
  if (!map) return XCB_NO_SYMBOL;
  const unsigned level = (state & XCB_MOD_MASK_5 ? 4u : 0u) + (state & XCB_MOD_MASK_SHIFT ? 1u : 0u);
  const unsigned column = level < map->keysyms_per_keycode ? level : 0;
  const xcb_keysym_t symbol = xcb_get_keyboard_mapping_keysyms(map.get())[column];
  return state & XCB_MOD_MASK_LOCK ? xkb_keysym_to_upper(symbol) : symbol;
}

}  // namespace

KeyWindow::KeyWindow(const std::string& display) : connection_(connectToDisplay(display)) {
  if (!connection_) throw std::runtime_error("cannot connect to " + display);
  modifiers_ = X11Modifiers::read(connection_.get());
  window_ = xcb_generate_id(connection_.get());
  const std::uint32_t values[] = {
      1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_EXPOSURE};
  xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, rootWindow(connection_.get()), 0, 0,
                    200, 100, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  xcb_map_window(connection_.get(), window_);
  takeFocus();
}

void KeyWindow::takeFocus() {
  xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
  XcbReply<void>(
      xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
  read();
  focusChanges = 0;
}

void KeyWindow::nameKey(std::uint16_t keyCode, xcb_keysym_t symbol) {
  xcb_change_keyboard_mapping(connection_.get(), 1, xKeycode(keyCode).value(), 1, &symbol);
  xcb_flush(connection_.get());
}

void KeyWindow::read() {
  while (const XcbEvent event{xcb_poll_for_event(connection_.get())}) {
    const int type = event->response_type & 0x7f;
    if (type == XCB_KEY_PRESS) onKey(reinterpret_cast<const xcb_key_press_event_t&>(*event));
    if (type == XCB_FOCUS_IN || type == XCB_FOCUS_OUT) {
      // Grabs announce themselves this way too; applications know those from a real loss of the focus.
      const auto mode = reinterpret_cast<const xcb_focus_in_event_t&>(*event).mode;
      if (mode == XCB_NOTIFY_MODE_NORMAL || mode == XCB_NOTIFY_MODE_WHILE_GRABBED) ++focusChanges;
    }
  }
}

void KeyWindow::onKey(const xcb_key_press_event_t& press) {
  const xcb_keysym_t symbol = symbolOf(connection_.get(), press.detail, press.state);
  if (isModifierKey(symbol)) return;
  keys.push_back({productKeyCode(press.detail), modifiers_.modifierSet(press.state)});
  char utf8[16] = {};
  if (symbol == XKB_KEY_BackSpace)
    text.resize(text.size() - text::lastCharacter(text).size());
  else if (xkb_keysym_to_utf8(symbol, utf8, sizeof utf8) > 0)
    text += utf8;
}

// Nobody can grab what another has grabbed.
bool KeyWindow::isGrabbed(xcb_window_t window, const KeyCombo& combo) {
  const std::uint16_t state = modifiers_.mask(combo.modifiers);
  const xcb_keycode_t key = xKeycode(combo.keyCode).value();
  // In one go, so that the attempt cannot get in the way of a real one.
  xcb_grab_server(connection_.get());
  const auto cookie = xcb_grab_key_checked(connection_.get(), 0, window, state, key, XCB_GRAB_MODE_ASYNC,
                                           XCB_GRAB_MODE_ASYNC);
  const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection_.get(), cookie));
  if (!error) xcb_ungrab_key(connection_.get(), key, window, state);
  xcb_ungrab_server(connection_.get());
  xcb_flush(connection_.get());
  return error != nullptr;
}

}  // namespace nimbletype
