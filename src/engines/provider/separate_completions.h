#pragma once
#include "engines/provider/completion_provider.h"

namespace nimbletype {

// Alternatives from an engine that writes one text a request: `count` requests at once, two at least. The
// first writes what the engine would suggest anyway, the others dare more. Requests that fail are left out as
// long as one succeeds. `provider` must outlive the task.
[[nodiscard]] Task separateCompletions(CompletionProvider& provider, const CompletionRequest& request,
                                       int count, CompletionProvider::TextsHandler grow,
                                       CompletionProvider::AlternativesHandler done);

// The texts that say something, each once.
std::vector<std::string> distinctTexts(const std::vector<std::string>& texts);

}  // namespace nimbletype
