#include "platform/linux/desktop/linux_running_apps.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <utility>

#include "platform/linux/bus/glib_thread.h"

namespace nimbletype {
namespace {

// A program that ends with its last window may still be saving after that.
constexpr Milliseconds graceAfterWindows{1'000};

}  // namespace

LinuxRunningApps::LinuxRunningApps(std::shared_ptr<DesktopEntries> entries, Milliseconds lookEvery)
    : entries_(std::move(entries)),
      clients_(entries_,
               [this](X11Clients::Change change) {
                 if (change == X11Clients::Change::windows) lookAndTell();
               }),
      lookEvery_(lookEvery) {}

LinuxRunningApps::~LinuxRunningApps() {
  onChange(nullptr);
}

std::vector<RunningApp> LinuxRunningApps::all() {
  look();
  return listed();
}

void LinuxRunningApps::onChange(std::function<void()> changed) {
  changed_ = std::move(changed);
  if (timer_ != 0) g_source_remove(std::exchange(timer_, 0));
  if (!changed_) return;
  told_ = all();
  const auto wake = +[](gpointer self) -> gboolean {
    static_cast<LinuxRunningApps*>(self)->lookAndTell();
    return G_SOURCE_CONTINUE;
  };
  timer_ = g_timeout_add(static_cast<guint>(lookEvery_.count()), wake, this);
}

void LinuxRunningApps::quit(const RunningApp& app, Quit how) {
  const auto process = static_cast<pid_t>(app.processID);
  const auto found = apps_.find(process);
  if (found == apps_.end() || found->second.app != app) return;
  if (how == Quit::forced)
    found->second.process->send(SIGKILL);
  else
    askToQuit(process, found->second);
}

void LinuxRunningApps::look() {
  const ProcessTable& processes = processes_.look();
  std::map<pid_t, RunningApp> windowed;
  for (const xcb_window_t window : clients_.all())
    if (auto app = clients_.appOf(window)) windowed.emplace(static_cast<pid_t>(app->processID), *app);
  auto now = applicationsAmong(processes, windowed, *entries_);
  if (!now.contains(getpid())) {
    WindowIdentity ours;
    ours.executable = executableOf(getpid());
    now.emplace(getpid(), runningApp(getpid(), entries_->of(ours)));
  }
  std::erase_if(apps_, [&](const auto& known) {
    const auto same = now.find(known.first);
    return same == now.end() || same->second != known.second.app;
  });
  for (auto& [process, app] : now) {
    if (apps_.contains(process)) continue;
    auto handle = std::make_unique<ProcessHandle>(process, [this, process] {
      apps_.erase(process);
      lookAndTell();
    });
    if (handle->isOpen()) apps_.emplace(process, Listed{std::move(app), std::move(handle)});
  }
}

void LinuxRunningApps::lookAndTell() {
  if (!changed_) return;
  auto now = all();
  if (now == told_) return;
  told_ = std::move(now);
  const auto changed = changed_;  // it may end itself
  changed();
}

std::vector<RunningApp> LinuxRunningApps::listed() const {
  std::vector<RunningApp> apps;
  std::ranges::transform(apps_, std::back_inserter(apps), [](const auto& known) { return known.second.app; });
  return apps;
}

std::vector<xcb_window_t> LinuxRunningApps::windowsOf(pid_t process) {
  auto windows = clients_.all();
  std::erase_if(windows, [&](xcb_window_t window) {
    const auto app = clients_.appOf(window);
    return !app || app->processID != process;
  });
  return windows;
}

void LinuxRunningApps::askToQuit(pid_t process, Listed& app) {
  auto windows = windowsOf(process);
  std::erase_if(windows, [&](xcb_window_t window) { return !clients_.canAskToClose(window); });
  if (windows.empty()) return app.process->send(SIGTERM);
  for (const xcb_window_t window : windows) clients_.askToClose(window);
  // One that still has windows by then may be asking the user something; one that has none lives on in a
  // tray.
  app.end = glibTimer(nullptr, graceAfterWindows, [this, process, &handle = *app.process] {
    if (windowsOf(process).empty()) handle.send(SIGTERM);
  });
}

}  // namespace nimbletype
