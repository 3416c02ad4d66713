#pragma once
#include <gio/gio.h>

#include "platform/linux/bus/glib_handle.h"
#include "platform/system/power_source.h"

namespace nimbletype {

// The power state as UPower tells it. Asked in the background; until it has answered, and where there is no
// UPower, the machine counts as plugged in. Tells of every change UPower tells of, and of UPower's own coming
// and going.
class UPowerPowerSource final : public PowerSource {
 public:
  UPowerPowerSource();
  ~UPowerPowerSource() override;
  UPowerPowerSource(const UPowerPowerSource&) = delete;
  UPowerPowerSource& operator=(const UPowerPowerSource&) = delete;

  bool onBattery() const override;
  void onChange(std::function<void()> changed) override { changed_ = std::move(changed); }
  // Whether UPower runs.
  bool isReachable() const;

 private:
  static void found(GObject*, GAsyncResult* result, gpointer self);
  void listen();

  GObjectPtr<GCancellable> cancellable_;
  GObjectPtr<GDBusProxy> proxy_;
  std::function<void()> changed_;
};

}  // namespace nimbletype
