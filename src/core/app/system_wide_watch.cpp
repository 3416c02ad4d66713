#include "core/app/system_wide_watch.h"

#include <utility>

namespace nimbletype {

SystemWideWatch::SystemWideWatch(Permissions& permissions, KeyTap& tap, SystemLog& log,
                                 std::function<void()> begin)
    : permissions_(permissions), tap_(tap), log_(log), begin_(std::move(begin)) {}

bool SystemWideWatch::start() {
  permissions_.onAccessibilityGranted([this] { allowed(); });
  observation_ = permissions_.observe([this] {
    if (!permissions_.accessibility()) tap_.stop();
  });
  if (permissions_.accessibility())
    allowed();
  else
    log_.log("app", "system-wide start: tap running false");
  return tap_.isRunning();
}

void SystemWideWatch::stop() {
  observation_.cancel();
  permissions_.onAccessibilityGranted({});
  tap_.stop();
}

void SystemWideWatch::allowed() {
  const bool running = tap_.start();
  if (const auto begin = std::exchange(begin_, nullptr)) begin();
  log_.log("app", std::string("system-wide start: tap running ") + (running ? "true" : "false"));
}

}  // namespace nimbletype
