#pragma once
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <memory>
#include <string>

#include "platform/linux/keys/relay/composition.h"

namespace nimbletype {

// What the keys mean at this moment: the layout and the modifiers, as the server last told.
class KeyboardState {
 public:
  explicit KeyboardState(xcb_connection_t* connection);

  bool isValid() const { return state_ != nullptr; }
  // Takes the event when it is one about the keyboard.
  bool handle(const xcb_generic_event_t& event);
  // The layout may have changed: it is read anew when there is time for it, since that takes milliseconds.
  bool isStale() const { return stale_; }
  void refresh();

  // The modifiers and locks in effect, as core events write them.
  std::uint16_t modifiers() const { return modifiers_; }
  // Takes a press as the applications do. True when the key goes on with a dead key or a Compose sequence.
  bool composes(xcb_keycode_t keycode) {
    return composition_.pressed(xkb_state_key_get_one_sym(state_.get(), keycode));
  }
  void endComposition() { composition_.reset(); }
  // What the key types: UTF-8, at most 8 UTF-16 units.
  std::string textOf(xcb_keycode_t keycode) const;

 private:
  void loadKeymap();

  struct Unref {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
  };
  xcb_connection_t* connection_;
  std::unique_ptr<xkb_context, Unref> context_;
  Composition composition_;
  std::unique_ptr<xkb_state, Unref> state_;
  std::int32_t device_ = -1;
  std::uint8_t firstEvent_ = 0;
  std::uint16_t modifiers_ = 0;
  bool stale_ = false;
};

}  // namespace nimbletype
