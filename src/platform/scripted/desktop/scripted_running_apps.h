#pragma once
#include <algorithm>
#include <set>
#include <utility>

#include "platform/desktop/running_apps.h"

namespace nimbletype {

// Applications that start when the test says so, and end when asked unless they are stubborn.
class ScriptedRunningApps : public RunningApps {
 public:
  std::vector<RunningApp> all() override { return apps_; }
  void onChange(std::function<void()> changed) override { changed_ = std::move(changed); }
  void quit(const RunningApp& app, Quit how) override {
    asked.emplace_back(app.processID, how);
    if (how == Quit::forced || !stubborn.contains(app.processID)) end(app.processID);
  }

  void launch(const RunningApp& app) {
    apps_.push_back(app);
    tell();
  }
  void end(std::int64_t processID) {
    if (std::erase_if(apps_, [&](const RunningApp& app) { return app.processID == processID; })) tell();
  }

  std::set<std::int64_t> stubborn;  // these refuse a polite request
  std::vector<std::pair<std::int64_t, Quit>> asked;

 private:
  void tell() {
    const auto changed = changed_;  // it may end itself
    if (changed) changed();
  }

  std::vector<RunningApp> apps_;
  std::function<void()> changed_;
};

}  // namespace nimbletype
