#pragma once
#include <optional>
#include <span>
#include <string>

#include "engines/writing/healing.h"
#include "engines/writing/sampler_chain.h"
#include "engines/writing/text_generation.h"
#include "engines/writing/utf8_accumulator.h"

namespace nimbletype {

// Writes one candidate behind the evaluated prompt, token by token, until a stop rule fires.
class CandidateWriter {
 public:
  CandidateWriter(LlamaModel& model, const GenerationOrder& order, const JobWatch& watch, int number);

  // Begins with the tokens that write a half-typed word again. What of them goes beyond the `typed` bytes is
  // text of the candidate; none of it counts as generated.
  std::expected<void, RuntimeFailure> beginWith(const HealingPath& path, std::size_t typed);
  std::expected<void, RuntimeFailure> write();

  const std::string& text() const { return text_; }
  int generatedTokens() const { return generated_; }

 private:
  bool extend(Token token);
  bool isDoubtful(Token token) const;
  bool cutAtStop();

  LlamaModel& model_;
  const GenerationOrder& order_;
  const JobWatch& watch_;
  bool grows_;
  SamplerChain chain_;
  Utf8Accumulator bytes_;
  std::string text_;
  int generated_ = 0;
};

}  // namespace nimbletype
