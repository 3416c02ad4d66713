#include "tools/stage/user_keyboard.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <optional>
#include <stdexcept>
#include <utility>

#include "platform/linux/keys/typing_layout.h"
#include "platform/linux/keys/x11_keymap.h"
#include "text/text.h"

namespace nimbletype {

namespace {

constexpr std::pair<std::uint8_t, std::uint16_t> modifierKeyCodes[] = {{ModifierSet::command, 55},
                                                                       {ModifierSet::option, 58},
                                                                       {ModifierSet::control, 59},
                                                                       {ModifierSet::shift, 56}};

// The first device of the kind that stands for hardware; one that stands for programs on a display without.
std::uint8_t findDevice(xcb_connection_t* connection, std::uint16_t type) {
  const XcbReply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
      connection, xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL), nullptr));
  if (!reply) throw std::runtime_error("the display has no XInput extension");
  std::optional<std::uint8_t> standIn;
  for (auto i = xcb_input_xi_query_device_infos_iterator(reply.get()); i.rem;
       xcb_input_xi_device_info_next(&i)) {
    const std::string_view name(xcb_input_xi_device_info_name(i.data), i.data->name_len);
    if (i.data->type != type) continue;
    const auto device = static_cast<std::uint8_t>(i.data->deviceid);
    if (name.find("XTEST") == std::string_view::npos) return device;
    standIn = device;
  }
  if (standIn) return *standIn;
  throw std::runtime_error("the display has no keyboard or mouse of its own");
}

}  // namespace

UserKeyboard::UserKeyboard(const std::string& display) : connection_(connectToDisplay(display)) {
  if (!connection_) throw std::runtime_error("cannot connect to display '" + display + "'");
  firstDeviceEvent_ = xcb_get_extension_data(connection_.get(), &xcb_input_id)->first_event;
  xcb_discard_reply(connection_.get(), xcb_input_xi_query_version(connection_.get(), 2, 2).sequence);
  keyboard_ = findDevice(connection_.get(), XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD);
  mouse_ = findDevice(connection_.get(), XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER);
}

void UserKeyboard::press(std::uint16_t keyCode, ModifierSet modifiers) {
  hold(modifiers);
  down(keyCode);
  up(keyCode);
  release(modifiers);
}

void UserKeyboard::type(std::string_view text) {
  const TypingLayout layout = readTypingLayout(connection_.get());
  for (std::string_view character : text::characters(text)) {
    const std::u16string units = text::toUtf16(character);
    const auto stroke = layout.characters.find(units.size() == 1 ? char32_t{units[0]} : U'\0');
    if (stroke == layout.characters.end())
      throw std::runtime_error("the layout has no key for '" + std::string(character) + "'");
    for (bool down : {true, false}) {
      for (unsigned bit = 0; bit < 8 && down; ++bit)
        if (stroke->second.modifiers & (1u << bit))
          fake(XCB_INPUT_DEVICE_KEY_PRESS, layout.modifierKey[bit], keyboard_);
      fake(down ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE, stroke->second.keycode,
           keyboard_);
      for (unsigned bit = 0; bit < 8 && !down; ++bit)
        if (stroke->second.modifiers & (1u << bit))
          fake(XCB_INPUT_DEVICE_KEY_RELEASE, layout.modifierKey[bit], keyboard_);
    }
  }
  syncWithServer(connection_.get());
}

void UserKeyboard::movePointer(int x, int y) {
  xcb_warp_pointer(connection_.get(), XCB_NONE, rootWindow(connection_.get()), 0, 0, 0, 0,
                   static_cast<std::int16_t>(x), static_cast<std::int16_t>(y));
  syncWithServer(connection_.get());
}

void UserKeyboard::click(std::uint8_t button) {
  fake(XCB_INPUT_DEVICE_BUTTON_PRESS, button, mouse_);
  fake(XCB_INPUT_DEVICE_BUTTON_RELEASE, button, mouse_);
  syncWithServer(connection_.get());
}

void UserKeyboard::scroll(bool up) {
  for (std::uint8_t event : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
    xcb_test_fake_input(connection_.get(), event, up ? 4 : 5, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
  syncWithServer(connection_.get());
}

void UserKeyboard::key(std::uint16_t keyCode, bool down) {
  const auto keycode = xKeycode(keyCode);
  if (!keycode) throw std::runtime_error("no such key: " + std::to_string(keyCode));
  fake(down ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE, *keycode, keyboard_);
  syncWithServer(connection_.get());
}

void UserKeyboard::modifierKeys(ModifierSet modifiers, bool down) {
  for (const auto& [bit, keyCode] : modifierKeyCodes)
    if (modifiers.contains(bit)) key(keyCode, down);
}

void UserKeyboard::fake(std::uint8_t deviceEvent, std::uint8_t detail, std::uint8_t device) {
  if (deviceEvent == XCB_INPUT_DEVICE_KEY_PRESS) lastPress_ = std::chrono::steady_clock::now();
  const auto type = static_cast<std::uint8_t>(firstDeviceEvent_ + deviceEvent);
  xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, device);
}

}  // namespace nimbletype
