#pragma once
#include <map>
#include <memory>
#include <vector>

#include "platform/desktop/running_apps.h"
#include "platform/linux/desktop/process_handle.h"
#include "platform/linux/desktop/user_processes.h"
#include "platform/linux/desktop/x11_clients.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// `RunningApps`: the user's processes that belong to an installed desktop entry, the owners of windows, and
// this one. What has windows is noticed as they come and go, and the end of anything at once; other programs
// that were launched are looked for now and then while somebody listens. A polite request closes the windows,
// and ends what lives on without any. Needs a GLib main loop on the default context.
class LinuxRunningApps final : public RunningApps {
 public:
  explicit LinuxRunningApps(std::shared_ptr<DesktopEntries> entries,
                            Milliseconds lookEvery = Milliseconds(30'000));
  ~LinuxRunningApps() override;
  LinuxRunningApps(const LinuxRunningApps&) = delete;
  LinuxRunningApps& operator=(const LinuxRunningApps&) = delete;

  std::vector<RunningApp> all() override;
  void onChange(std::function<void()> changed) override;
  void quit(const RunningApp& app, Quit how) override;

 private:
  struct Listed {
    RunningApp app;
    std::unique_ptr<ProcessHandle> process;
    Task end{};  // of one that was asked to quit
  };
  void look();
  void lookAndTell();
  std::vector<RunningApp> listed() const;
  std::vector<xcb_window_t> windowsOf(pid_t process);
  void askToQuit(pid_t process, Listed& app);

  std::shared_ptr<DesktopEntries> entries_;
  UserProcesses processes_;
  X11Clients clients_;
  std::map<pid_t, Listed> apps_;
  Milliseconds lookEvery_;
  unsigned timer_ = 0;
  std::function<void()> changed_;
  std::vector<RunningApp> told_;
};

}  // namespace nimbletype
