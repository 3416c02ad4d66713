#include "engines/servers/openai_messages.h"

#include <utility>

#include "engines/servers/server_json.h"

namespace nimbletype::openai {

std::string completionBody(const CompletionRequest& request) {
  return server_json::written({{"model", request.model},
                               {"prompt", request.rawPrompt},
                               {"max_tokens", request.maxTokens},
                               {"temperature", request.temperature},
                               {"stop", request.stop},
                               {"stream", false}});
}

CompletionResult decodeCompletionReply(std::string_view body) {
  auto texts = server_json::parsed(body).and_then(
      [](const auto& reply) { return server_json::strings(reply, "choices", "text"); });
  if (!texts) return std::unexpected(ProviderError{"The server's answer wasn't a completion"});
  if (texts->empty()) return Completion{};
  return Completion{std::move(texts->front()), {}};
}

std::expected<std::vector<std::string>, ProviderError> decodeModelsReply(std::string_view body) {
  auto names = server_json::parsed(body).and_then(
      [](const auto& reply) { return server_json::strings(reply, "data", "id"); });
  if (!names) return std::unexpected(ProviderError{"The server's answer wasn't a list of models"});
  return std::move(*names);
}

}  // namespace nimbletype::openai
