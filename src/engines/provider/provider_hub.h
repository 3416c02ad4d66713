#pragma once
#include <memory>
#include <vector>

#include "engines/provider/completion_provider.h"

namespace nimbletype {

// Owns one provider for each engine.
class ProviderHub {
 public:
  explicit ProviderHub(std::vector<std::unique_ptr<CompletionProvider>> providers);
  // None when this build has no such engine.
  CompletionProvider* provider(EngineKind kind) const;
  // The one that writes for the chosen engine now: Apple's model fills in while the built-in one is not
  // there.
  CompletionProvider* writer(EngineKind chosen) const;

 private:
  std::vector<std::unique_ptr<CompletionProvider>> providers_;
};

}  // namespace nimbletype
