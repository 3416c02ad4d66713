#pragma once
#include <string>
#include <vector>

#include "menubar/rival_apps.h"
#include "platform/desktop/running_apps.h"
#include "platform/system/main_loop.h"
#include "platform/system/observable.h"

namespace nimbletype {

// One running rival, as people see it.
struct RivalApp {
  std::string name;
  std::string icon;  // as in RunningApp
  bool operator==(const RivalApp&) const = default;
};

enum class QuitState {
  idle,      // nothing in progress
  quitting,  // asked to quit, and not yet gone
  refused,   // some that were asked were still running after the wait
};

// Knows which rivals run, and quits them. Main thread only.
class RivalWatcher {
 public:
  // What an application gets to save its work and go.
  static constexpr Milliseconds patience{3'000};

  RivalWatcher(RunningApps& apps, MainLoop& loop, RivalApps rivals);
  ~RivalWatcher();
  RivalWatcher(const RivalWatcher&) = delete;
  RivalWatcher& operator=(const RivalWatcher&) = delete;

  // Looks now, and from now on whenever an application comes or goes. `appeared` is told of every rival that
  // was not there at the look before.
  void start(std::function<void()> appeared);
  void stop();

  const Observable<std::vector<RivalApp>>& running() const { return running_; }
  const Observable<QuitState>& quitState() const { return quitState_; }
  // The name of the first of them; empty while there is none. Suggestions pause for it.
  const Observable<std::string>& pausedBy() const { return pausedBy_; }

  // Rebuilds `running` from the running applications.
  void refresh();
  // Asks all of them to quit, or ends them.
  void quitRivals(bool force);

 private:
  std::vector<RunningApp> rivals() const;
  void judge();
  bool isOneUnasked() const;

  RunningApps& apps_;
  MainLoop& loop_;
  RivalApps rules_;
  Observable<std::vector<RivalApp>> running_;
  Observable<QuitState> quitState_;
  Observable<std::string> pausedBy_;
  std::vector<std::int64_t>
      processes_;  // of those in `running_`, sorted, as are those that were asked to quit
  std::vector<std::int64_t> asked_;
  std::function<void()> appeared_;
  Task wait_;
};

}  // namespace nimbletype
