#pragma once
#include <QCoreApplication>
#include <functional>
#include <memory>

#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/linux/keys/key_window.h"
#include "tools/stage/private_display.h"
#include "tools/stage/user_keyboard.h"

namespace nimbletype {

// A display with one focused application and a user, and the main loop of this process.
struct KeyDesk {
  KeyDesk();
  ~KeyDesk();

  // Runs the main loop until the condition holds; a test failure that says what it waited for when it does
  // not within 10 s.
  bool waitUntil(const std::string& what, const std::function<bool()>& condition);
  // Presses a key nobody takes and waits until the application has it: all before it has arrived then, too.
  void letKeysArrive();

  PrivateDisplay display;
  std::unique_ptr<QCoreApplication> application;
  QtMainLoop loop;
  KeyWindow window{display.name()};
  UserKeyboard user{display.name()};
};

}  // namespace nimbletype
