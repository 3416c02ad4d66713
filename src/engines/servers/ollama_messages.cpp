#include "engines/servers/ollama_messages.h"

#include <utility>

#include "engines/servers/server_json.h"

namespace nimbletype::ollama {
namespace {

// How long the server keeps the model in memory after a request.
constexpr auto keptLoaded = "30m";

}  // namespace

std::string generateBody(const CompletionRequest& request) {
  return server_json::written(
      {{"model", request.model},
       {"prompt", request.rawPrompt},
       {"raw", true},
       {"stream", false},
       {"keep_alive", keptLoaded},
       {"options",
        {{"num_predict", request.maxTokens}, {"temperature", request.temperature}, {"stop", request.stop}}}});
}

std::string warmUpBody(const std::string& model) {
  return server_json::written({{"model", model}, {"prompt", ""}, {"keep_alive", keptLoaded}});
}

CompletionResult decodeGenerateReply(std::string_view body) {
  auto text = server_json::parsed(body).and_then(
      [](const auto& reply) { return server_json::string(reply, "response"); });
  if (!text) return std::unexpected(ProviderError{"The server's answer wasn't a completion"});
  return Completion{std::move(*text), {}};
}

std::expected<std::vector<std::string>, ProviderError> decodeTagsReply(std::string_view body) {
  auto names = server_json::parsed(body).and_then(
      [](const auto& reply) { return server_json::strings(reply, "models", "name"); });
  if (!names) return std::unexpected(ProviderError{"The server's answer wasn't a list of models"});
  return std::move(*names);
}

}  // namespace nimbletype::ollama
