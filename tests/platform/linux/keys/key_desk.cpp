#include "tests/platform/linux/keys/key_desk.h"

#include <gtest/gtest.h>

#include <chrono>

namespace nimbletype {

namespace {

constexpr std::uint16_t endKey = 119;

std::unique_ptr<QCoreApplication> makeApplication() {
  static int count = 1;
  static char name[] = "test";
  static char* arguments[] = {name, nullptr};
  return std::make_unique<QCoreApplication>(count, arguments);
}

}  // namespace

KeyDesk::KeyDesk() : application(makeApplication()) {}
KeyDesk::~KeyDesk() = default;

bool KeyDesk::waitUntil(const std::string& what, const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (true) {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    window.read();
    if (condition()) return true;
    if (std::chrono::steady_clock::now() > deadline) break;
    const auto wake = loop.after(Milliseconds(2), [] {});
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  ADD_FAILURE() << "waited 10 s for " << what;
  return false;
}

void KeyDesk::letKeysArrive() {
  user.press(endKey);
  if (!waitUntil("the application to receive the End key",
                 [&] { return !window.keys.empty() && window.keys.back().keyCode == endKey; }))
    return;
  window.keys.pop_back();
  window.times.pop_back();
}

}  // namespace nimbletype
