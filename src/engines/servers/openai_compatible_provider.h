#pragma once
#include "core/settings/preferences.h"
#include "engines/provider/completion_provider.h"
#include "engines/servers/server_client.h"
#include "platform/storage/secret_store.h"

namespace nimbletype {

// Writes with a model of any server that has OpenAI's completion endpoint. Address and key are read at each
// call.
class OpenAICompatibleProvider : public CompletionProvider {
 public:
  // Under this name the secret store keeps the server's key.
  static constexpr auto keyAccount = "server-api-key";

  OpenAICompatibleProvider(HttpClient& http, MainLoop& loop, const Preferences& prefs, SecretStore& secrets);

  EngineKind kind() const override { return EngineKind::openAI; }
  PromptStyle promptStyle() const override { return PromptStyle::raw; }

  [[nodiscard]] Task complete(const CompletionRequest& request, PartialHandler grow,
                              ResultHandler done) override;
  [[nodiscard]] Task status(StatusHandler done) override;
  // In the server's order.
  [[nodiscard]] Task models(ModelsHandler done) override;
  [[nodiscard]] Task alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                                  AlternativesHandler done) override;

 private:
  using Key = std::expected<std::optional<std::string>, SecretFailure>;

  ServerClient::Endpoint endpoint(const Key& key) const;
  // Goes on once the key is known, or known to be out of reach.
  Task withEndpoint(std::function<Task(const ServerClient::Endpoint&)> next);

  ServerClient client_;
  const Preferences& prefs_;
  SecretStore& secrets_;
};

}  // namespace nimbletype
