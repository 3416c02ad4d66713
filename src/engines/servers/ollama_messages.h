#pragma once
#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "engines/provider/completion_provider.h"

// What is said to an Ollama server and what it answers, in JSON.
namespace nimbletype::ollama {

// The prompt goes to the model as it is: no template of the server's is applied.
std::string generateBody(const CompletionRequest& request);
// Without a prompt the server only loads the model.
std::string warmUpBody(const std::string& model);

// The text written.
CompletionResult decodeGenerateReply(std::string_view body);
// The names of the models, in the server's order.
std::expected<std::vector<std::string>, ProviderError> decodeTagsReply(std::string_view body);

}  // namespace nimbletype::ollama
