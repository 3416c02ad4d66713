#include "tools/stage/waiting.h"

#include <glib.h>

#include <QCoreApplication>
#include <csignal>

namespace nimbletype {
namespace {

volatile std::sig_atomic_t endRequested = 0;

// One turn of the main loop that lasts no longer than this.
void turn(std::chrono::milliseconds atMost) {
  const guint timer = g_timeout_add(
      static_cast<guint>(atMost.count()), [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  g_main_context_iteration(nullptr, TRUE);
  g_source_remove(timer);
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
  // Which Qt leaves to its own event loop.
  if (QCoreApplication::instance()) QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  if (endRequested) throw GaveUp("was told to end");
}

}  // namespace

bool comesTrue(const std::function<bool()>& condition, std::chrono::milliseconds patience) {
  const auto deadline = Clock::now() + patience;
  while (!condition()) {
    if (Clock::now() > deadline) return false;
    turn(std::chrono::milliseconds(2));
  }
  return true;
}

void waitFor(const std::string& what, const std::function<bool()>& condition,
             std::chrono::milliseconds patience) {
  if (!comesTrue(condition, patience))
    throw GaveUp("waited " + std::to_string(patience.count() / 1000) + " s for " + what);
}

void rest(std::chrono::milliseconds time) {
  const auto end = Clock::now() + time;
  while (Clock::now() < end) turn(std::chrono::milliseconds(1));
}

void giveUpOnSignals() {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) std::signal(number, [](int) { endRequested = 1; });
}

}  // namespace nimbletype
