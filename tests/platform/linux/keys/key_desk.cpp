#include "tests/platform/linux/keys/key_desk.h"

#include <algorithm>

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
  const auto isEnd = [](const KeyCombo& combo) { return combo.keyCode == end; };
  // The server may serve the user before another client that was earlier, but not twice.
  for (int round = 1; round <= 2; ++round) {
    user.press(end);
    waitUntil("the application to receive the End key",
              [&] { return std::ranges::count_if(window.keys, isEnd) == round; });
  }
  std::erase_if(window.keys, isEnd);
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
