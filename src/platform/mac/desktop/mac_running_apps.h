#pragma once
#include "platform/desktop/running_apps.h"
#include "platform/system/task.h"

namespace nimbletype {

class MacRunningApps final : public RunningApps {
 public:
  std::vector<RunningApp> all() override;
  void onChange(std::function<void()> changed) override;
  void quit(const RunningApp& app, Quit how) override;

 private:
  Task registration_;
};

}  // namespace nimbletype
