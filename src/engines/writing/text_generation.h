#pragma once
#include <cstdint>
#include <expected>
#include <functional>
#include <string>
#include <vector>

#include "engines/llama/job_watch.h"
#include "engines/llama/llama_model.h"
#include "engines/llama/runtime_failure.h"
#include "engines/provider/completion_request.h"

namespace nimbletype {

// What to write behind a prompt, and how.
struct GenerationOrder {
  CompletionRequest request;
  int candidates = 1;
  double confidence = 0;   // a probability; 0 or less never stops for doubt
  std::uint32_t seed = 0;  // 0: random
  // Called on the model's thread with the text of the first candidate as it grows. May be empty.
  std::function<void(const std::string& textSoFar)> grow;
};

struct GenerationOutput {
  std::string text;
  std::int64_t promptTokens = 0, reusedTokens = 0, generatedTokens = 0;
  double promptMilliseconds = 0, generationMilliseconds = 0;
  std::vector<std::string> alternatives;  // the further candidates
};

// Evaluates the prompt and writes the candidates.
std::expected<GenerationOutput, RuntimeFailure> generate(LlamaModel& model, const GenerationOrder& order,
                                                         const JobWatch& watch);

}  // namespace nimbletype
