#include "engines/engine_set.h"

#include "engines/apple/apple_provider.h"
#include "engines/builtin/builtin_provider.h"
#include "engines/servers/ollama_provider.h"
#include "engines/servers/openai_compatible_provider.h"

namespace nimbletype {

std::vector<std::unique_ptr<CompletionProvider>> makeProviders(const EngineServices& s) {
  auto apple = std::make_unique<AppleIntelligenceProvider>(s.onDevice, s.loop);
  std::vector<std::unique_ptr<CompletionProvider>> providers;
  providers.push_back(std::make_unique<BuiltInProvider>(s.loop, s.model, s.log, apple.get()));
  providers.push_back(std::move(apple));
  providers.push_back(std::make_unique<OllamaProvider>(s.http, s.loop, s.prefs));
  providers.push_back(std::make_unique<OpenAICompatibleProvider>(s.http, s.loop, s.prefs, s.secrets));
  return providers;
}

}  // namespace nimbletype
