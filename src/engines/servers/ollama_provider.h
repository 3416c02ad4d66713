#pragma once
#include "core/settings/preferences.h"
#include "engines/provider/completion_provider.h"
#include "engines/servers/server_client.h"

namespace nimbletype {

// Writes with any model of an Ollama server. Address and model are read from the settings at each call.
class OllamaProvider : public CompletionProvider {
 public:
  OllamaProvider(HttpClient& http, MainLoop& loop, const Preferences& prefs);

  EngineKind kind() const override { return EngineKind::ollama; }
  PromptStyle promptStyle() const override { return PromptStyle::raw; }
  // Makes the server load the model and keep it loaded.
  void warmUp(const std::string& instructions) override;

  [[nodiscard]] Task complete(const CompletionRequest& request, PartialHandler grow,
                              ResultHandler done) override;
  [[nodiscard]] Task status(StatusHandler done) override;
  // Sorted, capitals first.
  [[nodiscard]] Task models(ModelsHandler done) override;
  [[nodiscard]] Task alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                                  AlternativesHandler done) override;

 private:
  server::Endpoint endpoint() const { return {prefs_.ollamaURL.get(), ""}; }

  ServerClient client_;
  const Preferences& prefs_;
  Task warming_;
};

}  // namespace nimbletype
