#include "menubar/rival_watcher.h"

#include <algorithm>
#include <utility>

namespace nimbletype {

RivalWatcher::RivalWatcher(RunningApps& apps, MainLoop& loop, RivalApps rivals)
    : apps_(apps), loop_(loop), rules_(std::move(rivals)) {}

RivalWatcher::~RivalWatcher() {
  stop();
}

void RivalWatcher::start(std::function<void()> appeared) {
  appeared_ = std::move(appeared);
  apps_.onChange([this] { refresh(); });
  refresh();
}

void RivalWatcher::stop() {
  apps_.onChange({});
  appeared_ = {};
  wait_.cancel();
}

std::vector<RunningApp> RivalWatcher::rivals() const {
  std::vector<RunningApp> found;
  for (RunningApp& app : apps_.all())
    if (!app.isOurs && rules_.isRival(app.bundleID, app.appName)) found.push_back(std::move(app));
  std::ranges::sort(found, {}, &RunningApp::processID);
  return found;
}

void RivalWatcher::refresh() {
  std::vector<RivalApp> running;
  std::vector<std::int64_t> processes;
  for (const RunningApp& app : rivals()) {
    running.push_back({app.appName, app.icon});
    processes.push_back(app.processID);
  }
  const auto before = std::exchange(processes_, processes);
  pausedBy_.set(running.empty() ? "" : running.front().name);
  running_.set(std::move(running));
  const bool isRefused = quitState_.get() == QuitState::refused;
  if (processes_.empty()) wait_.cancel();
  // One that came after the others refused is to be asked first.
  if (processes_.empty() || (isRefused && isOneUnasked())) quitState_.set(QuitState::idle);
  if (appeared_ && !std::ranges::includes(before, processes)) appeared_();
}

void RivalWatcher::quitRivals(bool force) {
  quitState_.set(QuitState::quitting);
  wait_ = loop_.after(patience, [this] { judge(); });
  asked_ = processes_;
  for (const RunningApp& app : rivals())
    apps_.quit(app, force ? RunningApps::Quit::forced : RunningApps::Quit::polite);
}

void RivalWatcher::judge() {
  refresh();
  quitState_.set(processes_.empty() || isOneUnasked() ? QuitState::idle : QuitState::refused);
}

bool RivalWatcher::isOneUnasked() const {
  return !std::ranges::includes(asked_, processes_);
}

}  // namespace nimbletype
