#include "engines/servers/ollama_provider.h"

#include <algorithm>
#include <utility>

#include "engines/provider/separate_completions.h"
#include "engines/provider/task_sequence.h"
#include "engines/servers/ollama_messages.h"

namespace nimbletype {

OllamaProvider::OllamaProvider(HttpClient& http, MainLoop& loop, const Preferences& prefs)
    : client_(http, loop), prefs_(prefs) {}

void OllamaProvider::warmUp(const std::string&) {
  const auto& model = prefs_.ollamaModel.get();
  if (model.empty()) return;
  warming_ = client_.post(endpoint(), "api/generate", ollama::warmUpBody(model), [](const auto&) {});
}

Task OllamaProvider::complete(const CompletionRequest& request, PartialHandler, ResultHandler done) {
  auto finished = [done = std::move(done)](const server::Body& body) {
    done(server::decoded(body, ollama::decodeGenerateReply));
  };
  if (request.model.empty()) return client_.fail({"Pick an Ollama model in Settings"}, std::move(finished));
  return client_.post(endpoint(), "api/generate", ollama::generateBody(request), std::move(finished));
}

Task OllamaProvider::models(ModelsHandler done) {
  return client_.get(endpoint(), "api/tags", [done = std::move(done)](const server::Body& body) {
    auto names = server::decoded(body, ollama::decodeTagsReply);
    if (names) std::ranges::sort(*names);
    done(std::move(names));
  });
}

// A server without models and no server at all both list nothing; only the first tells its version.
Task OllamaProvider::status(StatusHandler done) {
  TaskSequence steps;
  steps.run(models([this, steps, done = std::move(done)](const auto& names) mutable {
    if (names && !names->empty()) return done(server::modelsAvailable(names->size()));
    auto answered = [done, address = endpoint().address](const server::Body& version) {
      done(ProviderStatus::problem(version ? "Ollama is running but has no models"
                                           : "Ollama isn't running at " + server::shownAddress(address)));
    };
    steps.run(client_.get(endpoint(), "api/version", std::move(answered)));
  }));
  return steps.task();
}

Task OllamaProvider::alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                                  AlternativesHandler done) {
  return separateCompletions(*this, request, count, std::move(grow), std::move(done));
}

}  // namespace nimbletype
