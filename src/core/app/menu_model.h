#pragma once
#include "core/completion/deciding/status.h"
#include "core/rules/app_rules.h"
#include "engines/store/model_store.h"
#include "input/monitors/permissions.h"
#include "menubar/menu_content.h"
#include "personal/stats/stats_store.h"
#include "platform/desktop/workspace.h"
#include "platform/system/observable.h"

namespace nimbletype {

// The application as its menu tells of it, and what the rows of the menu do to it. Main thread only.
class MenuModel {
 public:
  struct Services {
    Preferences& prefs;
    AppRules& rules;
    StatsStore& stats;
    Permissions& permissions;
    RivalWatcher& rivals;
    ModelStore& modelStore;
    const Observable<Status>& status;
    const Observable<std::optional<RunningApp>>& frontApp;
    Workspace& workspace;
    const RegionSource& region;
  };
  // The rows that lead out of the menu.
  struct Ways {
    std::function<void()> openPlayground, openSettings, quit;
  };

  MenuModel(const Services& services, Ways ways);
  MenuModel(const MenuModel&) = delete;
  MenuModel& operator=(const MenuModel&) = delete;

  MenuState state() const;
  void act(MenuAction action);
  // Looks at what nobody tells of: the front application, before access is granted.
  void lookAgain();
  // Told of whatever the state may follow, until the task is destroyed.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

 private:
  void frontAppChanged(const std::optional<RunningApp>& app);
  void statusChanged();
  void resumeFrontApp();

  Services s_;
  Ways ways_;
  std::optional<RunningApp> front_;  // the last one that was not this one
  std::string failure_;
  Observers observers_;
  std::vector<Task> observations_;
};

// The parts of the state that the rules know: whether and until when suggestions pause for this application.
void tellPauses(MenuState& state, const AppRules& rules, const std::optional<RunningApp>& front);

}  // namespace nimbletype
