#pragma once
#include <QCoreApplication>
#include <QDeadlineTimer>

#include "platform/qt/network/qt_http_client.h"
#include "platform/qt/system/qt_main_loop.h"
#include "tests/engines/servers/provider_fixture.h"

namespace nimbletype {

// Providers over the client users have, talking to real servers.
class SocketFixture : public AskingTest {
 protected:
  // `what` is said when it does not happen.
  static void runUntil(const std::string& what, const std::function<bool()>& happened) {
    const QDeadlineTimer patience(60'000);
    while (!happened() && !patience.hasExpired())
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    ASSERT_TRUE(happened()) << "waited for " << what;
  }
  void await(const std::function<bool()>& answered) override { runUntil("an answer", answered); }

  QtMainLoop loop;
  QtHttpClient http;
  MemoryDefaultsStore defaults;
  Preferences prefs{defaults};
  MemorySecretStore secrets{loop};
};

}  // namespace nimbletype
