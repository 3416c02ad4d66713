#pragma once
#include <gio/gio.h>

#include "platform/power_source.h"

namespace nimbletype {

// The power state as UPower tells it. Asked in the background; until it has answered, and where there is no
// UPower, the machine counts as plugged in.
class UPowerSource final : public PowerSource {
 public:
  UPowerSource();
  ~UPowerSource() override;
  UPowerSource(const UPowerSource&) = delete;
  UPowerSource& operator=(const UPowerSource&) = delete;

  bool onBattery() const override;
  // Whether UPower runs.
  bool isReachable() const;

 private:
  static void found(GObject*, GAsyncResult* result, gpointer self);

  GCancellable* cancellable_;
  GDBusProxy* proxy_ = nullptr;
};

}  // namespace nimbletype
