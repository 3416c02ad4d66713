#pragma once
#include "platform/on_device/on_device_model.h"

namespace nimbletype {

// The port over Apple's own model.
class MacOnDeviceModel final : public OnDeviceModel {
 public:
  Availability availability() const override;
  [[nodiscard]] Task respond(const Request& request, Handler done) override;
  void prewarm(const std::string& instructions) override;
};

}  // namespace nimbletype
