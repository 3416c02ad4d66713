#include "engines/writing/text_generation.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "engines/writing/candidate_writer.h"
#include "engines/writing/healing.h"
#include "text/text.h"

namespace nimbletype {
namespace {

using Clock = std::chrono::steady_clock;
using Done = std::expected<void, RuntimeFailure>;

// Looks behind the prompt while a half-typed word is written again. Each costs as much as a token.
constexpr int healingEvaluations = 4;
// Room for the tokens of the healed word.
constexpr std::size_t healingRoom = 16;
// However many tokens are asked for, the prompt keeps at least this part of the context.
constexpr std::size_t leastPromptShare = 4;

double milliseconds(Clock::time_point from, Clock::time_point to) {
  return std::chrono::duration<double, std::milli>(to - from).count();
}

class TextGeneration {
 public:
  TextGeneration(LlamaModel& model, const GenerationOrder& order, const JobWatch& watch)
      : model_(model), order_(order), watch_(watch), healed_(healedPrompt(order.request)) {}

  std::expected<GenerationOutput, RuntimeFailure> run() {
    const auto start = Clock::now();
    if (const auto done = evaluatePrompt(healed_.prompt); !done) return std::unexpected(done.error());
    const auto evaluated = Clock::now();
    if (order_.request.maxTokens > 0)
      if (const auto done = writeCandidates(); !done) return std::unexpected(done.error());
    output_.promptMilliseconds = milliseconds(start, evaluated);
    output_.generationMilliseconds = milliseconds(evaluated, Clock::now());
    return std::move(output_);
  }

 private:
  Done evaluatePrompt(const std::string& text) {
    auto tokens = model_.vocabulary().tokens(text::repaired(text));
    if (!tokens) return std::unexpected(RuntimeFailure{RuntimeFailure::Case::tokenisation});
    if (tokens->empty()) tokens->push_back(model_.vocabulary().neutralToken());
    prompt_ = fitted(std::move(*tokens));
    const auto reused = model_.sequence().keepCommonPrefix(prompt_);
    output_.promptTokens = static_cast<std::int64_t>(prompt_.size());
    output_.reusedTokens = static_cast<std::int64_t>(reused);
    return model_.sequence().append(std::span(prompt_).subspan(reused), watch_);
  }

  // The prompt's tail behind the start token, when the whole does not fit.
  Tokens fitted(Tokens tokens) const {
    const auto context = static_cast<std::size_t>(model_.contextSize());
    const auto wanted = static_cast<std::size_t>(std::max(order_.request.maxTokens, 0)) + healingRoom;
    const auto room = std::max(context - std::min(wanted, context), context / leastPromptShare);
    const std::size_t fixed = model_.vocabulary().start() ? 1 : 0;
    const auto cut = windowStart(tokens.size() - fixed, room - fixed);
    const auto first = tokens.begin() + static_cast<std::ptrdiff_t>(fixed);
    tokens.erase(first, first + static_cast<std::ptrdiff_t>(cut));
    return tokens;
  }

  Done writeCandidates() {
    const auto paths = findPaths();
    if (!paths) return std::unexpected(paths.error());
    for (int number = 0; number < std::max(order_.candidates, 1); ++number)
      if (const auto done = writeCandidate(number, *paths); !done) return done;
    return {};
  }

  // Without a way to write the typed letters again the prompt is continued as it stands.
  std::expected<std::vector<HealingPath>, RuntimeFailure> findPaths() {
    if (healed_.required.empty()) return {};
    auto paths = healingPaths(model_.vocabulary().pieces(), healed_.required,
                              static_cast<std::size_t>(std::max(order_.candidates, 1)), healingEvaluations,
                              [this](const Tokens& path) { return logitsAfter(path); });
    if (paths && paths->empty()) {
      const auto done = evaluatePrompt(order_.request.rawPrompt);
      if (!done) return std::unexpected(done.error());
    }
    return paths;
  }

  std::expected<std::span<const float>, RuntimeFailure> logitsAfter(const Tokens& path) {
    if (path.empty()) return model_.sequence().logits();
    if (const auto done = returnToPrompt(); !done) return std::unexpected(done.error());
    if (const auto done = model_.sequence().append(path, watch_); !done) return std::unexpected(done.error());
    return model_.sequence().logits();
  }

  Done returnToPrompt() {
    if (model_.sequence().trim(prompt_.size())) return {};
    return model_.sequence().append(prompt_, watch_);
  }

  // Behind the first candidate, the prompt's last token is evaluated again for its logits.
  Done returnToPromptEnd() {
    if (model_.sequence().size() == prompt_.size()) return {};
    const auto kept = model_.sequence().keepCommonPrefix(prompt_);
    return model_.sequence().append(std::span(prompt_).subspan(kept), watch_);
  }

  Done writeCandidate(int number, const std::vector<HealingPath>& paths) {
    CandidateWriter writer(model_, order_, watch_, number);
    if (const auto done = paths.empty() ? returnToPromptEnd() : returnToPrompt(); !done) return done;
    if (!paths.empty()) {
      const auto& path = paths[static_cast<std::size_t>(number) % paths.size()];
      if (const auto done = writer.beginWith(path, healed_.required.size()); !done) return done;
    }
    if (const auto done = writer.write(); !done) return done;
    output_.generatedTokens += writer.generatedTokens();
    if (number == 0)
      output_.text = writer.text();
    else
      output_.alternatives.push_back(writer.text());
    return {};
  }

  LlamaModel& model_;
  const GenerationOrder& order_;
  const JobWatch& watch_;
  HealedPrompt healed_;
  Tokens prompt_;
  GenerationOutput output_;
};

}  // namespace

std::expected<GenerationOutput, RuntimeFailure> generate(LlamaModel& model, const GenerationOrder& order,
                                                         const JobWatch& watch) {
  return TextGeneration(model, order, watch).run();
}

}  // namespace nimbletype
