#include "engines/provider/provider_hub.h"

#include <algorithm>
#include <utility>

namespace nimbletype {

ProviderHub::ProviderHub(std::vector<std::unique_ptr<CompletionProvider>> providers)
    : providers_(std::move(providers)) {}

CompletionProvider* ProviderHub::provider(EngineKind kind) const {
  const auto found = std::ranges::find(providers_, kind, [](const auto& each) { return each->kind(); });
  return found == providers_.end() ? nullptr : found->get();
}

CompletionProvider* ProviderHub::writer(EngineKind chosen) const {
  CompletionProvider* wanted = provider(chosen);
  if (chosen != EngineKind::builtIn || !wanted || wanted->isReady()) return wanted;
  CompletionProvider* standIn = provider(EngineKind::apple);
  return standIn && standIn->isReady() ? standIn : wanted;
}

}  // namespace nimbletype
