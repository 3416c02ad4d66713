#include "platform/mac/on_device/mac_on_device_model.h"

#include <memory>
#include <utility>

#include "platform/mac/on_device/on_device_model_bridge.h"

namespace nimbletype {
namespace {

using Handler = OnDeviceModel::Handler;

// None once it is called or cancelled. The bridge holds a reference of its own until it has called back.
using Pending = std::shared_ptr<Handler>;

std::expected<std::string, OnDeviceModel::Failure> resultOf(int32_t outcome, const char* text) {
  if (outcome == nimbletype_on_device_answered) return text;
  return std::unexpected(OnDeviceModel::Failure{outcome == nimbletype_on_device_refused, text});
}

void answered(void* context, int32_t outcome, const char* text) {
  const std::unique_ptr<Pending> pending(static_cast<Pending*>(context));
  if (const auto done = std::exchange(**pending, nullptr)) done(resultOf(outcome, text));
}

}  // namespace

OnDeviceModel::Availability MacOnDeviceModel::availability() const {
  switch (nimbletype_on_device_availability()) {
    case nimbletype_on_device_available:
      return Availability::available;
    case nimbletype_on_device_not_eligible:
      return Availability::deviceNotEligible;
    case nimbletype_on_device_not_enabled:
      return Availability::notEnabled;
    case nimbletype_on_device_not_ready:
      return Availability::modelNotReady;
    default:
      return Availability::unavailable;
  }
}

Task MacOnDeviceModel::respond(const Request& request, Handler done) {
  const auto pending = std::make_shared<Handler>(std::move(done));
  void* handle =
      nimbletype_on_device_respond(request.instructions.c_str(), request.prompt.c_str(), request.temperature,
                                   request.maxTokens, answered, new Pending(pending));
  return Task([pending, handle] {
    *pending = nullptr;
    nimbletype_on_device_release(handle);
  });
}

void MacOnDeviceModel::prewarm(const std::string& instructions) {
  nimbletype_on_device_prewarm(instructions.c_str());
}

}  // namespace nimbletype
