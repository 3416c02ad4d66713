#include "core/app/system_wide_watch.h"

#include <utility>

#include "platform/system/beat.h"

namespace nimbletype {

SystemWideWatch::SystemWideWatch(Permissions& permissions, KeyTap& tap, MainLoop& loop, SystemLog& log,
                                 std::function<void()> begin)
    : permissions_(permissions), tap_(tap), loop_(loop), log_(log), begin_(std::move(begin)) {}

bool SystemWideWatch::start() {
  permissions_.onAccessibilityGranted([this] { allowed(); });
  observation_ = permissions_.observe([this] {
    if (!permissions_.accessibility()) tap_.stop();
  });
  if (permissions_.accessibility())
    allowed();
  else
    logStart();
  retryLater();
  return tap_.isRunning();
}

void SystemWideWatch::stop() {
  observation_.cancel();
  retry_.cancel();
  permissions_.onAccessibilityGranted({});
  tap_.stop();
}

void SystemWideWatch::allowed() {
  tap_.start();
  if (const auto begin = std::exchange(begin_, nullptr)) begin();
  logStart();
}

void SystemWideWatch::logStart() {
  log_.log("app", std::string("system-wide start: tap running ") + (tap_.isRunning() ? "true" : "false"));
}

void SystemWideWatch::retryLater() {
  retry_ = loop_.after(untilBeat(loop_, retryInterval), [this] {
    retryLater();
    if (permissions_.accessibility() && !tap_.isRunning() && tap_.start()) logStart();
  });
}

}  // namespace nimbletype
