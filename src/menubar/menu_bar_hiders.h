#pragma once
#include <vector>

#include "platform/desktop/running_apps.h"
#include "platform/desktop/screens.h"
#include "platform/desktop/status_bar.h"

namespace nimbletype {

// Whether this application's icon can be seen, and who may be hiding it.
class MenuBarHiders {
 public:
  MenuBarHiders(RunningApps& apps, const StatusBar& bar, const Screens& screens)
      : apps_(apps), bar_(bar), screens_(screens) {}

  // The organisers of menu bars that run.
  std::vector<RunningApp> runningHiders() const;
  bool isStatusIconVisible() const;

 private:
  RunningApps& apps_;
  const StatusBar& bar_;
  const Screens& screens_;
};

// An item that a bar has taken in can be seen where its centre lies on a screen; one of a desktop that keeps
// places to itself is taken at its word.
bool isOnScreen(const StatusItemPlace& place, const std::vector<Screen>& screens);

}  // namespace nimbletype
