#include "platform/scripted/desktop/scripted_workspace.h"

namespace nimbletype {

void ScriptedWorkspace::bringToFront(std::optional<RunningApp> app) {
  if (app == app_) return;
  app_ = std::move(app);
  const auto changed = changed_;  // it may end itself
  if (changed) changed();
}

}  // namespace nimbletype
