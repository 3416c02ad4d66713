#pragma once
#include <functional>

#include "core/app/app_model.h"
#include "main/arguments.h"
#include "windows/kit/window_desktop.h"

namespace nimbletype {

// Completes what a desktop lends by our own windows. `quit` ends the main loop. Needs a QApplication.
Ports withWindows(Ports ports, const WindowDesktop& desktop, std::function<void()> quit);

// Does what a start asks for. A later one that asks for nothing wants the settings: that is how they are
// reached while the icon is hidden.
void obey(WindowManager& windows, const Arguments& arguments, bool isLater);

}  // namespace nimbletype
