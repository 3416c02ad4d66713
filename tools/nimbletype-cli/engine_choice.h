#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli.h"
#include "core/settings/preferences.h"
#include "desktop.h"
#include "engines/provider/provider_hub.h"
#include "engines/store/model_locator.h"
#include "options.h"
#include "platform/scripted/storage/memory_defaults_store.h"

namespace nimbletype::cli {

// What a command line says of the engine; what it leaves out is as the user has set it.
struct EngineOptions {
  std::optional<EngineKind> engine;
  std::optional<std::string> model;  // a GGUF file, or the name of a server's model
  std::optional<std::string> url;    // of the server

  void addTo(Options& options);
};

// All engines of the application, over a copy of the user's settings that is never written back.
class Engines {
 public:
  Engines(Desktop& desktop, const EngineOptions& options);

  EngineKind chosen() const { return prefs_->engine.get(); }
  const Preferences& prefs() const { return *prefs_; }
  const ProviderHub& hub() const { return *hub_; }
  // The built-in model's file; none when it is not there.
  std::optional<std::string> modelFile() const { return model_->installedModel(); }
  // The address a server engine is asked at.
  const std::string& address(EngineKind kind) const;
  // Asks an engine and waits.
  ProviderStatus status(CompletionProvider& provider) const;
  std::expected<std::vector<std::string>, ProviderError> models(CompletionProvider& provider) const;
  CompletionResult complete(CompletionProvider& provider, const CompletionRequest& request) const;
  std::expected<std::vector<std::string>, ProviderError> alternatives(CompletionProvider& provider,
                                                                      const CompletionRequest& request,
                                                                      int count) const;

 private:
  Desktop& desktop_;
  MemoryDefaultsStore defaults_;
  std::unique_ptr<Preferences> prefs_;
  std::unique_ptr<ModelLocator> model_;
  std::unique_ptr<ProviderHub> hub_;
};

}  // namespace nimbletype::cli
