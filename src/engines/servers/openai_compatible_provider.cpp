#include "engines/servers/openai_compatible_provider.h"

#include <utility>

#include "engines/provider/separate_completions.h"
#include "engines/provider/task_sequence.h"
#include "engines/servers/openai_messages.h"

namespace nimbletype {
namespace {

// A server that lists nothing counts as none: there is nothing to choose there.
ProviderStatus statusOf(const ServerClient::Endpoint& endpoint,
                        const std::expected<std::vector<std::string>, ProviderError>& names) {
  if (!endpoint) return ProviderStatus::problem(endpoint.error().message);
  if (names && !names->empty()) return server::modelsAvailable(names->size());
  return ProviderStatus::problem("No server answered at " + server::shownAddress(endpoint->address));
}

}  // namespace

OpenAICompatibleProvider::OpenAICompatibleProvider(HttpClient& http, MainLoop& loop, const Preferences& prefs,
                                                   SecretStore& secrets)
    : client_(http, loop), prefs_(prefs), secrets_(secrets) {}

// A key nobody can read must not turn into a request without one: the server's refusal would mislead. Where
// there is no store there is no key.
ServerClient::Endpoint OpenAICompatibleProvider::endpoint(const Key& key) const {
  if (!key && key.error() == SecretFailure::locked)
    return std::unexpected(ProviderError{"Unlock the keychain that holds your server's API key"});
  return server::Endpoint{prefs_.serverURL.get(), key ? key->value_or("") : ""};
}

Task OpenAICompatibleProvider::withEndpoint(std::function<Task(const ServerClient::Endpoint&)> next) {
  TaskSequence steps;
  steps.run(secrets_.read(keyAccount, [this, steps, next = std::move(next)](const Key& key) mutable {
    steps.run(next(endpoint(key)));
  }));
  return steps.task();
}

Task OpenAICompatibleProvider::complete(const CompletionRequest& request, PartialHandler,
                                        ResultHandler done) {
  auto finished = [done = std::move(done)](const server::Body& body) {
    done(server::decoded(body, openai::decodeCompletionReply));
  };
  if (request.model.empty()) return client_.fail({"Pick a model for your local server"}, std::move(finished));
  return withEndpoint([this, body = openai::completionBody(request), finished](const auto& endpoint) {
    return client_.post(endpoint, "completions", body, finished);
  });
}

Task OpenAICompatibleProvider::models(ModelsHandler done) {
  return withEndpoint([this, done = std::move(done)](const auto& endpoint) {
    return client_.get(endpoint, "models", [done](const server::Body& body) {
      done(server::decoded(body, openai::decodeModelsReply));
    });
  });
}

Task OpenAICompatibleProvider::status(StatusHandler done) {
  return withEndpoint([this, done = std::move(done)](const auto& endpoint) {
    return client_.get(endpoint, "models", [done, endpoint](const server::Body& body) {
      done(statusOf(endpoint, server::decoded(body, openai::decodeModelsReply)));
    });
  });
}

Task OpenAICompatibleProvider::alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                                            AlternativesHandler done) {
  return separateCompletions(*this, request, count, std::move(grow), std::move(done));
}

}  // namespace nimbletype
