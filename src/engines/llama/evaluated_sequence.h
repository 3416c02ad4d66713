#pragma once
#include <expected>
#include <span>

#include "engines/llama/job_watch.h"
#include "engines/llama/runtime_failure.h"
#include "engines/llama/token_cache.h"

struct llama_context;

namespace nimbletype {

// The tokens whose state the context holds, and the logits behind the last of them. Grows by evaluation,
// shrinks by trimming; the list and the context always agree, after failures too.
class EvaluatedSequence {
 public:
  // `window`: how far back the model's sliding-window layers look, 0 for none.
  EvaluatedSequence(llama_context* context, int vocabularySize, int window);

  // Keeps what `prompt` has in common with the evaluated tokens, but never all of `prompt`. Returns how much.
  std::size_t keepCommonPrefix(std::span<const Token> prompt);
  // Evaluates more tokens in chunks; stops between chunks, and inside of one where the processor allows it.
  std::expected<void, RuntimeFailure> append(std::span<const Token> tokens, const JobWatch& watch);
  // Back to the first `length` tokens. False, with everything forgotten, when the model cannot go back.
  bool trim(std::size_t length);
  void clear();

  std::size_t size() const { return tokens_.size(); }
  std::span<const float> logits() const;

 private:
  bool holdsStateBefore(std::size_t length) const;
  std::expected<void, RuntimeFailure> decode(std::span<const Token> chunk, const JobWatch& watch);

  llama_context* context_;
  int vocabularySize_;
  int window_;
  Tokens tokens_;
};

}  // namespace nimbletype
