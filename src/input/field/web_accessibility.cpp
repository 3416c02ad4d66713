#include "input/field/web_accessibility.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

namespace nimbletype {
namespace {

constexpr std::array<std::string_view, 16> browsers{
    "com.google.Chrome", "com.google.Chrome.canary", "com.brave.Browser", "com.microsoft.edgemac",
    "company.thebrowser.Browser", "com.vivaldi.Vivaldi", "com.operasoftware.Opera", "ai.perplexity.comet",
    // The same as the desktop files of Linux name them.
    "google-chrome", "chromium", "chromium-browser", "org.chromium.Chromium", "brave-browser",
    "microsoft-edge", "vivaldi-stable", "opera"};

bool isBrowser(const RunningApp& app) {
  return std::ranges::find(browsers, app.bundleID) != browsers.end();
}

bool isElectron(const RunningApp& app) {
  std::error_code ignored;
  return !app.bundlePath.empty() &&
         std::filesystem::exists(app.bundlePath + "/Contents/Frameworks/Electron Framework.framework",
                                 ignored);
}

}  // namespace

void WebAccessibility::enable(const RunningApp& app, Accessibility& accessibility, const ObjectRef& element) {
  if (!element || enabled_.contains(app.processID)) return;
  const bool browser = isBrowser(app);
  if (!browser && !isElectron(app)) return;
  const bool accepted = accessibility.write(element, "AXManualAccessibility", true) ||
                        (browser && accessibility.write(element, "AXEnhancedUserInterface", true));
  if (accepted) enabled_.insert(app.processID);
}

}  // namespace nimbletype
