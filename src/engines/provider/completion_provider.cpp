#include "engines/provider/completion_provider.h"

namespace nimbletype {

std::string ProviderStatus::label() const {
  switch (state) {
    case Case::notChecked:
      return "Not checked yet";
    case Case::checking:
      return "Checking…";
    case Case::good:
    case Case::problem:
      break;
  }
  return text;
}

void CompletionProvider::warmUp(const std::string&) {}

// Engines that override these keep the handlers.
// NOLINTBEGIN(performance-unnecessary-value-param)
Task CompletionProvider::models(ModelsHandler done) {
  done({});
  return {};
}

Task CompletionProvider::prepare(const CompletionRequest&, ResultHandler done) {
  done(Completion{});
  return {};
}

Task CompletionProvider::alternatives(const CompletionRequest&, int, TextsHandler, AlternativesHandler done) {
  done({});
  return {};
}
// NOLINTEND(performance-unnecessary-value-param)

}  // namespace nimbletype
