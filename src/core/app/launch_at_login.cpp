#include "core/app/launch_at_login.h"

namespace nimbletype {

void LaunchAtLogin::set(bool on) {
  if (const auto changed = item_.set(on); !changed)
    log_.log("app", "Nimbletype: launch at login change failed: " + changed.error());
  observers_.notify();
}

}  // namespace nimbletype
