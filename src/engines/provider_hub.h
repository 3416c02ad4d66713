#pragma once
#include <memory>
#include <vector>

#include "engines/completion_provider.h"

namespace nimbletype {

// Owns one provider for each engine. Adding an engine is adding one file and one line where the hub is built.
class ProviderHub {
 public:
  explicit ProviderHub(std::vector<std::unique_ptr<CompletionProvider>> providers);
  // None when this build has no such engine.
  CompletionProvider* provider(EngineKind kind) const;

 private:
  std::vector<std::unique_ptr<CompletionProvider>> providers_;
};

}  // namespace nimbletype
