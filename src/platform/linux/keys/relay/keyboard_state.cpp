#include "platform/linux/keys/relay/keyboard_state.h"

#include <xkbcommon/xkbcommon-x11.h>

#include "platform/linux/x11/xcb_support.h"
#include "platform/linux/x11/xcb_xkb.h"

namespace nimbletype {

namespace {

constexpr std::size_t mostUnits = 8;

// Cut to whole code points of at most 8 UTF-16 units together.
std::string clipped(std::string text) {
  std::size_t units = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) == 0x80) continue;
    units += byte >= 0xF0 ? 2 : 1;
    if (units > mostUnits) return text.substr(0, i);
  }
  return text;
}

void selectKeyboardEvents(xcb_connection_t* connection) {
  constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                   XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
  constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                  XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS;
  xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
}

}  // namespace

KeyboardState::KeyboardState(xcb_connection_t* connection)
    : connection_(connection), context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)), composition_(context_.get()) {
  if (!context_ || !xkb_x11_setup_xkb_extension(
                       connection_, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                       XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent_, nullptr))
    return;
  device_ = xkb_x11_get_core_keyboard_device_id(connection_);
  if (device_ == -1) return;
  selectKeyboardEvents(connection_);
  loadKeymap();
}

bool KeyboardState::handle(const xcb_generic_event_t& event) {
  if (firstEvent_ == 0 || (event.response_type & 0x7f) != firstEvent_) return false;
  // The kind of keyboard event is where other events have their detail.
  if (event.pad0 == XCB_XKB_STATE_NOTIFY) {
    const auto& change = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    modifiers_ = change.mods;
    if (state_)
      xkb_state_update_mask(state_.get(), change.baseMods, change.latchedMods, change.lockedMods,
                            static_cast<xkb_layout_index_t>(change.baseGroup),
                            static_cast<xkb_layout_index_t>(change.latchedGroup), change.lockedGroup);
  } else {
    stale_ = true;
  }
  return true;
}

void KeyboardState::refresh() {
  stale_ = false;
  loadKeymap();
}

void KeyboardState::loadKeymap() {
  const std::unique_ptr<xkb_keymap, Unref> keymap(
      xkb_x11_keymap_new_from_device(context_.get(), connection_, device_, XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!keymap) return;
  state_.reset(xkb_x11_state_new_from_device(keymap.get(), connection_, device_));
  if (state_)
    modifiers_ =
        static_cast<std::uint16_t>(xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_EFFECTIVE) & 0xff);
}

std::string KeyboardState::textOf(xcb_keycode_t keycode) const {
  char text[64];
  const int size = xkb_state_key_get_utf8(state_.get(), keycode, text, sizeof text);
  if (size <= 0 || size >= static_cast<int>(sizeof text)) return {};
  return clipped(std::string(text, static_cast<std::size_t>(size)));
}

}  // namespace nimbletype
