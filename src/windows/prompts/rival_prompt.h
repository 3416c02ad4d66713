#pragma once
#include <string>
#include <vector>

#include "core/settings/preferences.h"
#include "menubar/rival_watcher.h"
#include "windows/kit/prompt_window.h"

namespace nimbletype {

// Tells that other applications answer the same keys, and quits them. It follows them until they are gone.
class RivalPrompt final : public PromptWindow {
 public:
  RivalPrompt(RivalWatcher& watcher, Preferences& prefs);

 private:
  void follow();
  void act();

  RivalWatcher& watcher_;
  Preferences& prefs_;
  std::vector<RivalApp> rivals_;  // all that were there since they were asked to quit
  QCheckBox* nextTime_;
  QPushButton *later_, *chief_;
  std::vector<Task> observations_;
};

}  // namespace nimbletype
