#pragma once
#include <optional>
#include <string>

#include "core/settings/preferences.h"
#include "engines/provider/provider_hub.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Sees to it that the chosen engine is in memory before it is needed: when it is chosen, and again when the
// user comes back to writing after the engine may have been put away.
class WarmUp {
 public:
  // How long an engine that was used stays in memory for sure.
  static constexpr std::chrono::minutes kept{25};

  WarmUp(MainLoop& loop, ProviderHub& hub, Preferences& prefs);
  void now();
  // Follows once nobody changes the choice any more.
  void engineChosen();
  void fieldEntered(const std::string& fieldKey);
  // A request has gone out, which does what a warm-up does.
  void requested() { lastPrewarm_ = loop_.now(); }

 private:
  MainLoop& loop_;
  ProviderHub& hub_;
  Preferences& prefs_;
  std::optional<MonotonicTime> lastPrewarm_;
  std::string preparedFieldKey_;
  Task soon_;
};

}  // namespace nimbletype
