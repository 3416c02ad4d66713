#include "main/face.h"

#include "windows/app_windows.h"

namespace nimbletype {

Ports withWindows(Ports ports, const WindowDesktop& desktop, std::function<void()> quit) {
  ports.quit = std::move(quit);
  ports.makeWindows = [&settings = ports.systemSettings, desktop](AppModel& model) {
    return std::make_unique<AppWindows>(model, settings, desktop);
  };
  return ports;
}

void obey(WindowManager& windows, const Arguments& arguments, bool isLater) {
  if (arguments.playIntro) windows.playIntro();
  if (arguments.openSettings || (isLater && !arguments.playIntro)) windows.openSettings(arguments.pane);
}

}  // namespace nimbletype
