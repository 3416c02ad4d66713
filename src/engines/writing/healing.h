#pragma once
#include <expected>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "engines/llama/piece_index.h"
#include "engines/llama/runtime_failure.h"
#include "engines/provider/completion_request.h"

namespace nimbletype {

// Where a half-typed word is to be written again from its start: the prompt before it, and the typed letters
// the continuation must begin with.
struct HealedPrompt {
  std::string prompt;
  std::string required;
  bool operator==(const HealedPrompt&) const = default;
};

// The word at the end of the raw prompt with the blank before it (vocabularies spell a word with its blank),
// or the blank itself after a finished word. Nothing is required when there is nothing to heal.
HealedPrompt healedPrompt(const CompletionRequest& request);

// Tokens that spell the required letters and perhaps go on, and their joint probability.
struct HealingPath {
  Tokens tokens;
  double logProbability = 0;
};

// The logits that follow the healed prompt and the given tokens.
using PathLogits = std::function<std::expected<std::span<const float>, RuntimeFailure>(const Tokens&)>;

// The most probable different ways to write the required letters, best first, at most `wanted`. A word may
// need several tokens, and a token that is only the beginning of the letters is worth what its best
// continuation is worth; so the search follows the most probable path first and asks for the logits behind
// it, `evaluations` times at most beyond the prompt's own. Empty when that is not enough.
std::expected<std::vector<HealingPath>, RuntimeFailure> healingPaths(const PieceIndex& pieces,
                                                                     const std::string& required,
                                                                     std::size_t wanted, int evaluations,
                                                                     const PathLogits& logitsAfter);

}  // namespace nimbletype
