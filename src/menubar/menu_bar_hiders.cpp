#include "menubar/menu_bar_hiders.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace nimbletype {
namespace {

constexpr std::array<std::string_view, 5> hiders{"com.surteesstudios.Bartender", "com.jordanbaird.Ice",
                                                 "com.dwarvesv.minimalbar", "net.matthewpalmer.Vanilla",
                                                 "com.mortennn.Dozer"};

bool contains(const BottomLeftRect& frame, double x, double y) {
  return x >= frame.x && x < frame.right() && y >= frame.y && y < frame.top();
}

}  // namespace

std::vector<RunningApp> MenuBarHiders::runningHiders() const {
  std::vector<RunningApp> found = apps_.all();
  std::erase_if(found, [](const RunningApp& app) { return std::ranges::count(hiders, app.bundleID) == 0; });
  return found;
}

bool MenuBarHiders::isStatusIconVisible() const {
  return isOnScreen(bar_.place(), screens_.all());
}

bool isOnScreen(const StatusItemPlace& place, const std::vector<Screen>& screens) {
  if (!place.isHosted || !place.frame) return place.isHosted;
  const BottomLeftRect& item = *place.frame;
  const double x = item.x + item.width / 2, y = item.y + item.height / 2;
  return item.width > 0 &&
         std::ranges::any_of(screens, [&](const Screen& screen) { return contains(screen.frame, x, y); });
}

}  // namespace nimbletype
