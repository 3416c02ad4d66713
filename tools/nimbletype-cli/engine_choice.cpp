#include "engine_choice.h"

#include <cstdlib>

#include "engines/engine_set.h"
#include "engines/store/model_store.h"

namespace nimbletype::cli {
namespace {

std::optional<std::string> namedModel(const EngineOptions& options, EngineKind chosen) {
  if (options.model && chosen == EngineKind::builtIn) return options.model;
  const char* model = std::getenv("NIMBLETYPE_MODEL");
  return model && *model ? std::optional<std::string>(model) : std::nullopt;
}

std::unique_ptr<ModelLocator> makeLocator(Desktop& desktop, std::optional<std::string> named) {
  if (named) return std::make_unique<NamedModel>(std::move(named));
  return std::make_unique<ModelStore>(
      ModelStore::Services{desktop.loop(), desktop.downloads(), desktop.background(), desktop.disk(),
                           desktop.log()},
      builtInModel(modelHub(desktop.defaults(), desktop.log())), desktop.dataFolder() / "Models");
}

// Runs one operation of a provider until it has answered.
template <typename Answer, typename Start>
Answer awaited(Desktop& desktop, Start start) {
  std::optional<Answer> result;
  const Task running = start([&](Answer answer) { result = std::move(answer); });
  desktop.runUntil([&] { return result.has_value(); });
  return std::move(*result);
}

}  // namespace

void EngineOptions::addTo(Options& options) {
  options.value("--engine", [this](const std::string& value) -> std::string {
    engine = fromRawValue<EngineKind>(value);
    if (engine) return {};
    return "\"" + value + "\" is no engine; there are builtIn, apple, ollama and openAI";
  });
  options.value("--model", model);
  options.value("--url", url);
}

Engines::Engines(Desktop& desktop, const EngineOptions& options) : desktop_(desktop) {
  for (const std::string& key : desktop.defaults().keys())
    if (const auto value = desktop.defaults().get(key)) defaults_.set(key, *value);
  prefs_ = std::make_unique<Preferences>(defaults_);
  // A model file can only mean the engine that takes one.
  const bool namesFile = options.model && options.model->ends_with(".gguf");
  if (options.engine || namesFile) prefs_->engine.set(options.engine.value_or(EngineKind::builtIn));
  const bool ollama = chosen() == EngineKind::ollama;
  if (options.model && usesServer(chosen()))
    (ollama ? prefs_->ollamaModel : prefs_->serverModel).set(*options.model);
  if (options.url && usesServer(chosen())) (ollama ? prefs_->ollamaURL : prefs_->serverURL).set(*options.url);
  model_ = makeLocator(desktop, namedModel(options, chosen()));
  hub_ = std::make_unique<ProviderHub>(makeProviders({desktop.loop(), *prefs_, *model_, desktop.http(),
                                                      desktop.secrets(), desktop.onDevice(), desktop.log()}));
}

const std::string& Engines::address(EngineKind kind) const {
  return kind == EngineKind::ollama ? prefs_->ollamaURL.get() : prefs_->serverURL.get();
}

ProviderStatus Engines::status(CompletionProvider& provider) const {
  return awaited<ProviderStatus>(desktop_, [&](auto done) { return provider.status(done); });
}

std::expected<std::vector<std::string>, ProviderError> Engines::models(CompletionProvider& provider) const {
  return awaited<std::expected<std::vector<std::string>, ProviderError>>(
      desktop_, [&](auto done) { return provider.models(done); });
}

std::expected<std::vector<std::string>, ProviderError> Engines::alternatives(CompletionProvider& provider,
                                                                             const CompletionRequest& request,
                                                                             int count) const {
  using Result = std::expected<std::vector<std::string>, ProviderError>;
  return awaited<Result>(desktop_,
                         [&](auto done) { return provider.alternatives(request, count, {}, done); });
}

CompletionResult Engines::complete(CompletionProvider& provider, const CompletionRequest& request) const {
  return awaited<CompletionResult>(desktop_, [&](auto done) { return provider.complete(request, {}, done); });
}

}  // namespace nimbletype::cli
