#pragma once
#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "engines/provider/completion_provider.h"

// What is said to a server with OpenAI's completion endpoint and what it answers, in JSON.
namespace nimbletype::openai {

std::string completionBody(const CompletionRequest& request);

// The text of the first choice; empty when the server offers none.
CompletionResult decodeCompletionReply(std::string_view body);
// The models in the server's order.
std::expected<std::vector<std::string>, ProviderError> decodeModelsReply(std::string_view body);

}  // namespace nimbletype::openai
