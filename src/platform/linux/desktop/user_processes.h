#pragma once
#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

#include "platform/desktop/workspace.h"
#include "platform/linux/desktop/desktop_entries.h"

namespace nimbletype {

struct UserProcess {
  pid_t parent = 0;          // as it was when the program was started
  std::string executable{};  // with its folder
  // Names it may have in a desktop entry, the likeliest first; none for one at another display of the user's.
  std::vector<std::string> programs{};
};
using ProcessTable = std::map<pid_t, UserProcess>;

// What the user's processes are. Only those that are new, or run another program now, are looked at closely.
class UserProcesses {
 public:
  const ProcessTable& look();

 private:
  ProcessTable known_;
};

// The file name of the program that the process runs; empty when it has ended or is not the user's.
std::string executableOf(pid_t process);
RunningApp runningApp(pid_t process, const DesktopEntry& entry);

// The applications among the processes, each under one process: those that own its windows, or else the
// topmost ones of its entry. `windowed` tells the owners of windows.
std::map<pid_t, RunningApp> applicationsAmong(const ProcessTable& processes,
                                              const std::map<pid_t, RunningApp>& windowed,
                                              DesktopEntries& entries);

}  // namespace nimbletype
