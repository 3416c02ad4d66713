#include "platform/linux/keys/xcb_event_poster.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon.h>

#include <bitset>

#include "platform/linux/keys/own_event_mark.h"
#include "platform/linux/x11/xcb_xkb.h"

namespace nimbletype {

namespace {

// Applications look up what a key means when they come to its event; sooner they may find it gone.
constexpr Milliseconds mappingTime{150};

// Applications take a few milliseconds for each key, and the user's own keys wait behind them.
constexpr std::size_t shortText = 80;

bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

// Command's place is taken by Control on this desktop: that is what application shortcuts such as pasting
// use.
ModifierSet asApplicationsExpect(ModifierSet modifiers) {
  if (!modifiers.contains(ModifierSet::command)) return modifiers;
  return {static_cast<std::uint8_t>((modifiers.rawValue & ~ModifierSet::command) | ModifierSet::control)};
}

std::bitset<256> keysDown(const xcb_input_query_device_state_reply_t& state) {
  std::bitset<256> down;
  for (auto i = xcb_input_query_device_state_classes_iterator(&state); i.rem;
       xcb_input_input_state_next(&i)) {
    if (i.data->class_id != XCB_INPUT_INPUT_CLASS_KEY) continue;
    const auto& keys = reinterpret_cast<const xcb_input_key_state_t&>(*i.data);
    for (std::size_t key = 0; key < down.size(); ++key) down[key] = keys.keys[key / 8] >> (key % 8) & 1;
  }
  return down;
}

}  // namespace

XcbEventPoster::XcbEventPoster(MainLoop& loop, std::function<std::uint32_t()> markWindow, std::string display)
    : loop_(loop), markWindow_(std::move(markWindow)), display_(std::move(display)) {
  connect();
}

XcbEventPoster::~XcbEventPoster() {
  if (!connection_) return;
  unmapKeys();
  syncWithServer(connection_.get());
}

void XcbEventPoster::connect() {
  hasTestExtension_ = false;
  connection_ = connectToDisplay(display_);
  if (!connection_) return;
  const auto* test = xcb_get_extension_data(connection_.get(), &xcb_test_id);
  const auto* keyboard = xcb_get_extension_data(connection_.get(), &xcb_xkb_id);
  const auto* input = xcb_get_extension_data(connection_.get(), &xcb_input_id);
  hasTestExtension_ = test && test->present && keyboard && keyboard->present && input && input->present;
  if (!hasTestExtension_) return;
  firstDeviceEvent_ = input->first_event;
  xcb_discard_reply(connection_.get(), xcb_input_xi_query_version(connection_.get(), 2, 2).sequence);
  xcb_discard_reply(connection_.get(), xcb_xkb_use_extension(connection_.get(), 1, 0).sequence);
  markAtom_ = atomNamed(connection_.get(), ownEventMark);
  modifiers_ = X11Modifiers::read(connection_.get());
}

bool XcbEventPoster::begin() {
  if (!connection_ || xcb_connection_has_error(connection_.get())) connect();
  return hasTestExtension_;
}

// The rest of an earlier text goes first: it waits for keys to become free again.
void XcbEventPoster::end() {
  if (!waitsForKeys_) typeWaiting();
}

bool XcbEventPoster::suits(std::u16string_view text) const {
  return text.size() <= shortText && canType(readTypingLayout(connection_.get()), text);
}

void XcbEventPoster::press(std::uint16_t keyCode, ModifierSet modifiers) {
  if (const auto key = xKeycode(keyCode))
    waiting_.emplace_back(KeyStroke{*key, modifiers_.mask(asApplicationsExpect(modifiers))});
}

void XcbEventPoster::type(std::u16string_view chunk) {
  for (std::size_t i = 0; i < chunk.size(); ++i) {
    char32_t character = chunk[i];
    if (isHighSurrogate(chunk[i]) && i + 1 < chunk.size())
      character = 0x10000 + ((character - 0xD800) << 10) + (chunk[++i] - 0xDC00);
    waiting_.emplace_back(character);
  }
}

void XcbEventPoster::typeWaiting() {
  if (waiting_.empty() || !connection_) return;
  const TypingLayout layout = readTypingLayout(connection_.get());
  const std::vector<Stroke> strokes(waiting_.begin(), waiting_.end());
  const TypingBatch batch = planBatch(strokes, layout);
  if (batch.strokes.empty() && mappedKeys_.empty()) {
    waiting_.clear();  // a keyboard without a single free key: these characters cannot be typed
    return;
  }
  post(batch, layout);
  waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(batch.strokes.size()));
  waitsForKeys_ = !waiting_.empty();
  if (mappedKeys_.empty()) return;
  unmap_ = loop_.after(mappingTime, [this] {
    unmapKeys();
    waitsForKeys_ = false;
    typeWaiting();
  });
}

void XcbEventPoster::post(const TypingBatch& batch, const TypingLayout& layout) {
  mapKeys(batch);
  const Held held = readHeld(layout);
  mark(true);
  for (const HeldKey& key : held.keys) fakeHeldKey(key, false);
  if (held.capsLock) lockCaps(false);
  for (const KeyStroke& stroke : batch.strokes) typeStroke(stroke, layout);
  if (held.capsLock) lockCaps(true);
  for (const HeldKey& key : held.keys) fakeHeldKey(key, true);
  mark(false);
  xcb_flush(connection_.get());
}

void XcbEventPoster::mapKeys(const TypingBatch& batch) {
  for (const auto& [key, character] : batch.mappings) {
    const xcb_keysym_t symbol = xkb_utf32_to_keysym(character);
    const xcb_keysym_t levels[] = {symbol, symbol};  // the same with Shift
    xcb_change_keyboard_mapping(connection_.get(), 1, key, 2, levels);
    mappedKeys_.push_back(key);
  }
}

void XcbEventPoster::unmapKeys() {
  constexpr xcb_keysym_t nothing[] = {XCB_NO_SYMBOL, XCB_NO_SYMBOL};
  for (xcb_keycode_t key : mappedKeys_) xcb_change_keyboard_mapping(connection_.get(), 1, key, 2, nothing);
  mappedKeys_.clear();
  xcb_flush(connection_.get());
}

void XcbEventPoster::mark(bool posting) {
  const xcb_window_t window = markWindow_ ? markWindow_() : XCB_NONE;
  if (window == XCB_NONE) return;
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = markAtom_;
  event.data.data32[0] = posting;
  xcb_send_event(connection_.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&event));
}

void XcbEventPoster::typeStroke(const KeyStroke& stroke, const TypingLayout& layout) {
  holdModifiers(stroke.modifiers, layout, true);
  fakeKey(stroke.keycode, true);
  fakeKey(stroke.keycode, false);
  holdModifiers(stroke.modifiers, layout, false);
}

void XcbEventPoster::holdModifiers(std::uint16_t modifiers, const TypingLayout& layout, bool down) {
  for (unsigned bit = 0; bit < 8; ++bit)
    if ((modifiers & (1u << bit)) && layout.modifierKey[bit]) fakeKey(layout.modifierKey[bit], down);
}

void XcbEventPoster::fakeKey(xcb_keycode_t key, bool down) {
  xcb_test_fake_input(connection_.get(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key, XCB_CURRENT_TIME,
                      XCB_NONE, 0, 0, 0);
}

// On the very keyboard it is held on: only so does letting it go, whenever that is, end it.
void XcbEventPoster::fakeHeldKey(const HeldKey& held, bool down) {
  const int event = firstDeviceEvent_ + (down ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE);
  xcb_test_fake_input(connection_.get(), static_cast<std::uint8_t>(event), held.key, XCB_CURRENT_TIME,
                      XCB_NONE, 0, 0, held.device);
}

void XcbEventPoster::lockCaps(bool on) {
  const std::uint8_t locks = on ? XCB_MOD_MASK_LOCK : 0;
  xcb_xkb_latch_lock_state(connection_.get(), XCB_XKB_ID_USE_CORE_KBD, XCB_MOD_MASK_LOCK, locks, 0, 0, 0, 0,
                           0);
}

// The modifiers held down at this moment on any keyboard: they would change what we type.
XcbEventPoster::Held XcbEventPoster::readHeld(const TypingLayout& layout) const {
  Held held;
  xcb_connection_t* connection = connection_.get();
  const auto stateCookie = xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD);
  const auto devices = keyboards();
  std::vector<xcb_input_query_device_state_cookie_t> cookies;
  cookies.reserve(devices.size());
  for (std::uint8_t device : devices) cookies.push_back(xcb_input_query_device_state(connection, device));
  for (std::size_t i = 0; i < devices.size(); ++i) {
    const XcbReply<xcb_input_query_device_state_reply_t> state(
        xcb_input_query_device_state_reply(connection, cookies[i], nullptr));
    const auto down = state ? keysDown(*state) : std::bitset<256>();
    for (xcb_keycode_t key : layout.modifierKeys)
      if (down[key]) held.keys.push_back({devices[i], key});
  }
  const XcbReply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(connection, stateCookie, nullptr));
  held.capsLock = state && (state->lockedMods & XCB_MOD_MASK_LOCK);
  return held;
}

std::vector<std::uint8_t> XcbEventPoster::keyboards() const {
  std::vector<std::uint8_t> found;
  const XcbReply<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
      connection_.get(), xcb_input_xi_query_device(connection_.get(), XCB_INPUT_DEVICE_ALL), nullptr));
  if (!reply) return found;
  for (auto i = xcb_input_xi_query_device_infos_iterator(reply.get()); i.rem;
       xcb_input_xi_device_info_next(&i))
    if (i.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD)
      found.push_back(static_cast<std::uint8_t>(i.data->deviceid));
  return found;
}

}  // namespace nimbletype
