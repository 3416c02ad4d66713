#pragma once
#include <cstdint>
#include <memory>
#include <span>

#include "engines/llama/token_cache.h"

struct llama_sampler;

namespace nimbletype {

// Chooses the tokens of one candidate; remembers them for the repetition penalty.
class SamplerChain {
 public:
  // A seed of 0 means a random one. Below a temperature of 0.05 the choice is greedy and needs none.
  SamplerChain(int vocabularySize, double temperature, std::uint32_t seed);

  Token sample(std::span<const float> logits);
  void accept(Token token);

 private:
  struct Free {
    void operator()(llama_sampler* chain) const;
  };
  std::unique_ptr<llama_sampler, Free> chain_;
};

}  // namespace nimbletype
