#include "main/quit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <array>
#include <csignal>

namespace nimbletype {
namespace {

std::array<int, 2> wakePipe{-1, -1};

// All that may be done inside a handler. A second signal ends the program at once.
void signalled(int number) {
  std::signal(number, SIG_DFL);
  const char byte = 0;
  [[maybe_unused]] const auto written = ::write(wakePipe[1], &byte, 1);
}

}  // namespace

void quitOnSignals() {
  if (::pipe(wakePipe.data()) != 0) return;
  for (const int end : wakePipe) {
    ::fcntl(end, F_SETFD, FD_CLOEXEC);
    ::fcntl(end, F_SETFL, O_NONBLOCK);
  }
  auto* notifier =
      new QSocketNotifier(wakePipe[0], QSocketNotifier::Read, QCoreApplication::instance());  // its owner
  QObject::connect(notifier, &QSocketNotifier::activated, &QCoreApplication::quit);
  // A program that is to outlive its terminal was started with this signal ignored.
  for (const int number : {SIGTERM, SIGINT, SIGHUP})
    if (std::signal(number, signalled) == SIG_IGN) std::signal(number, SIG_IGN);
}

}  // namespace nimbletype
