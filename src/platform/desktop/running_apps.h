#pragma once
#include <functional>
#include <vector>

#include "platform/desktop/workspace.h"

namespace nimbletype {

// The applications that run in the user's session, those without a window included. Main thread only.
class RunningApps {
 public:
  enum class Quit { polite, forced };

  virtual ~RunningApps() = default;
  // Each once, this one too, in no order. One that has ended is not among them.
  virtual std::vector<RunningApp> all() = 0;
  // Called after an application was launched or ended, at once or soon after. One listener; an empty function
  // ends it.
  virtual void onChange(std::function<void()> changed) = 0;
  // Asks an application to quit, which it may refuse; or ends it. Returns at once. Nothing happens to an
  // application that has ended, even when its process number has gone to another.
  virtual void quit(const RunningApp& app, Quit how) = 0;
};

}  // namespace nimbletype
