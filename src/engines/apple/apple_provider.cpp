#include "engines/apple/apple_provider.h"

#include <utility>

#include "engines/provider/separate_completions.h"
#include "text/text.h"

namespace nimbletype {
namespace {

using Availability = OnDeviceModel::Availability;

ProviderStatus statusOf(Availability availability) {
  switch (availability) {
    case Availability::available:
      return ProviderStatus::good("Ready");
    case Availability::deviceNotEligible:
      return ProviderStatus::problem("This Mac can't run Apple Intelligence");
    case Availability::notEnabled:
      return ProviderStatus::problem("Turn on Apple Intelligence in System Settings");
    case Availability::modelNotReady:
      return ProviderStatus::problem("The model is still downloading");
    case Availability::unavailable:
      break;
  }
  return ProviderStatus::problem("Apple Intelligence is unavailable");
}

// The system's own words; where it has none, what is known about its model.
std::string sentence(const OnDeviceModel::Failure& failure, Availability availability) {
  if (!text::isBlank(failure.text)) return text::repaired(text::trimmed(failure.text));
  const auto status = statusOf(availability);
  return status.isProblem() ? status.text : "Apple Intelligence couldn't continue this text";
}

}  // namespace

Task AppleIntelligenceProvider::complete(const CompletionRequest& request, PartialHandler,
                                         ResultHandler done) {
  auto answered = [this, done = std::move(done)](std::expected<std::string, OnDeviceModel::Failure> reply) {
    if (reply) return done(Completion{std::move(*reply), {}});
    if (reply.error().refused) return done(Completion{});
    done(std::unexpected(ProviderError{sentence(reply.error(), model_.availability())}));
  };
  return model_.respond({request.instructions, request.prompt, request.temperature, request.maxTokens},
                        std::move(answered));
}

Task AppleIntelligenceProvider::status(StatusHandler done) {
  return loop_.after(Milliseconds(0), [this, done = std::move(done)] {
    const auto handler = done;
    handler(statusOf(model_.availability()));
  });
}

Task AppleIntelligenceProvider::alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                                             AlternativesHandler done) {
  return separateCompletions(*this, request, count, std::move(grow), std::move(done));
}

}  // namespace nimbletype
