#include "platform/mac/desktop/mac_application.h"

#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {

std::optional<RunningApp> described(NSRunningApplication* app) {
  if (!app) return std::nullopt;
  const std::string bundle = utf8String(app.bundleURL.path);
  return RunningApp{.processID = app.processIdentifier,
                    .bundleID = utf8String(app.bundleIdentifier),
                    .appName = utf8String(app.localizedName),
                    .bundlePath = bundle,
                    .isOurs = [app isEqual:NSRunningApplication.currentApplication] != NO,
                    .icon = bundle};
}

}  // namespace nimbletype
