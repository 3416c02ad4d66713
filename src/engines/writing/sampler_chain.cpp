#include "engines/writing/sampler_chain.h"

#include <llama.h>

#include <random>
#include <vector>

namespace nimbletype {
namespace {

constexpr double greedyBelow = 0.05;

std::uint32_t seedToUse(std::uint32_t seed) {
  if (seed != 0) return seed;
  std::random_device random;
  return std::uniform_int_distribution<std::uint32_t>(0, 0xFFFFFFFE)(random) + 1;
}

}  // namespace

void SamplerChain::Free::operator()(llama_sampler* chain) const {
  llama_sampler_free(chain);
}

SamplerChain::SamplerChain(int vocabularySize, double temperature, std::uint32_t seed)
    : chain_(llama_sampler_chain_init(llama_sampler_chain_default_params())) {
  const auto add = [this](llama_sampler* sampler) { llama_sampler_chain_add(chain_.get(), sampler); };
  add(llama_sampler_init_top_k(40));
  add(llama_sampler_init_penalties(vocabularySize, 64, 1.15F, 0, 0));
  if (temperature < greedyBelow) {
    add(llama_sampler_init_greedy());
    return;
  }
  add(llama_sampler_init_top_p(0.9F, 1));
  add(llama_sampler_init_min_p(0.05F, 1));
  add(llama_sampler_init_temp(static_cast<float>(temperature)));
  add(llama_sampler_init_dist(seedToUse(seed)));
}

Token SamplerChain::sample(std::span<const float> logits) {
  thread_local std::vector<llama_token_data> choices;
  choices.resize(logits.size());
  for (std::size_t i = 0; i < logits.size(); ++i) choices[i] = {static_cast<Token>(i), logits[i], 0};
  llama_token_data_array all{choices.data(), choices.size(), -1, false};
  llama_sampler_apply(chain_.get(), &all);
  const auto token = all.data[all.selected].id;
  accept(token);
  return token;
}

void SamplerChain::accept(Token token) {
  llama_sampler_accept(chain_.get(), token);
}

}  // namespace nimbletype
