#pragma once
#include "platform/on_device/on_device_model.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Linux has no language model of its own.
class AbsentOnDeviceModel final : public OnDeviceModel {
 public:
  explicit AbsentOnDeviceModel(MainLoop& loop) : loop_(loop) {}

  Availability availability() const override { return Availability::deviceNotEligible; }
  [[nodiscard]] Task respond(const Request&, Handler done) override {
    return loop_.after(Milliseconds(0), [done = std::move(done)] {
      done(std::unexpected(Failure{false, "This system has no language model"}));
    });
  }
  void prewarm(const std::string&) override {}

 private:
  MainLoop& loop_;
};

}  // namespace nimbletype
