#include "tests/platform/linux/keys/key_desk.h"

#include "tools/stage/waiting.h"

namespace nimbletype {

void KeyDesk::waitUntil(const std::string& what, const std::function<bool()>& condition) {
  waitFor(what, [&] {
    window.read();
    return condition();
  });
}

void KeyDesk::letKeysArrive() {
  constexpr std::uint16_t end = 119;
  user.press(end);
  waitUntil("the application to receive the End key",
            [&] { return !window.keys.empty() && window.keys.back().keyCode == end; });
  window.keys.pop_back();
}

std::vector<KeyCombo> KeyDesk::received(const std::vector<KeyCombo>& pressed) {
  window.keys.clear();
  for (const KeyCombo& combo : pressed) user.press(combo.keyCode, combo.modifiers);
  letKeysArrive();
  return window.keys;
}

void KeyDesk::waitForGrab(const KeyCombo& combo, bool grabbed) {
  waitUntil("the key to be grabbed or let go", [&] { return window.isGrabbed(combo) == grabbed; });
}

}  // namespace nimbletype
