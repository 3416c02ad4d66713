#pragma once
#include <QCoreApplication>
#include <functional>

#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/linux/keys/key_window.h"
#include "tools/stage/private_display.h"
#include "tools/stage/user_keyboard.h"

namespace nimbletype {

// A display with one focused application and a user, and the main loop of this process.
struct KeyDesk {
  // Lets the application there take its keys and runs the main loop here until the condition holds.
  void waitUntil(const std::string& what, const std::function<bool()>& condition);
  // Presses a key nobody takes and waits until the application has it: all before it has arrived then, too.
  void letKeysArrive();
  // The user presses these keys one after the other; answers which of them the application received.
  std::vector<KeyCombo> received(const std::vector<KeyCombo>& pressed);
  void waitForGrab(const KeyCombo& combo, bool grabbed = true);

  PrivateDisplay display;
  int noArguments = 0;
  QCoreApplication application{noArguments, nullptr};
  QtMainLoop loop;
  KeyWindow window{display.name()};
  UserKeyboard user{display.name()};
};

}  // namespace nimbletype
