#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/desktop/geometry.h"

namespace nimbletype {

struct RunningApp {
  std::int64_t processID = 0;
  std::string bundleID{};    // on Linux the desktop file's id
  std::string appName{};     // for people
  std::string bundlePath{};  // empty where the desktop has no bundles
  // Its shortcuts take Shift on top, as those of Linux terminals do: their programs use the plain ones.
  bool isTerminal = false;
  bool isOurs = false;  // this process; it cannot answer itself through Accessibility
  std::string icon{};   // a bundle, a picture's file or the name the desktop's theme has for it; may be empty
  bool operator==(const RunningApp&) const = default;
};

// An application's window as it lies on the screen, not minimised.
struct ScreenWindow {
  std::uint64_t id = 0;  // the desktop's number for it, the same for as long as it is open
  RunningApp app;
  std::string title;  // empty where the desktop keeps titles to itself
  TopLeftRect frame;
  bool operator==(const ScreenWindow&) const = default;
};

// The applications of the desktop. Main thread only.
class Workspace {
 public:
  virtual ~Workspace() = default;
  virtual std::optional<RunningApp> frontmost() = 0;
  // Called after the frontmost application changed. One listener; an empty function ends it.
  virtual void onFrontmostChanged(std::function<void()> changed) = 0;
  // The windows in sight, those in front first.
  virtual std::vector<ScreenWindow> windows() = 0;
};

}  // namespace nimbletype
