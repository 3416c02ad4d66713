#include "engines/writing/candidate_writer.h"

#include <array>
#include <cmath>
#include <utility>

#include "engines/writing/confidence.h"
#include "engines/writing/stop_sequences.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr double furtherTemperature = 0.8;

}  // namespace

// The first candidate is the suggestion; the others are to differ from it.
CandidateWriter::CandidateWriter(LlamaModel& model, const GenerationOrder& order, const JobWatch& watch,
                                 int number)
    : model_(model),
      order_(order),
      watch_(watch),
      grows_(number == 0 && order.grow),
      chain_(model.vocabulary().size(), number == 0 ? order.request.temperature : furtherTemperature,
             number == 0 ? order.seed : 0) {}

std::expected<void, RuntimeFailure> CandidateWriter::beginWith(const HealingPath& path, std::size_t typed) {
  std::string bytes;
  for (const auto token : path.tokens) {
    chain_.accept(token);
    bytes += model_.vocabulary().piece(token);
  }
  bytes_.append(std::string_view(bytes).substr(typed));
  text_ = bytes_.text();
  return model_.sequence().append(path.tokens, watch_);
}

std::expected<void, RuntimeFailure> CandidateWriter::write() {
  if (cutAtStop()) return {};
  if (grows_ && !text_.empty()) order_.grow(text_);
  while (generated_ < order_.request.maxTokens) {
    if (watch_.hooks && watch_.hooks->beforeToken) watch_.hooks->beforeToken(generated_);
    if (watch_.isStale()) return std::unexpected(RuntimeFailure{});
    const auto token = chain_.sample(model_.sequence().logits());
    if (model_.vocabulary().endsGeneration(token)) return {};
    ++generated_;
    if (!extend(token)) return {};
    if (grows_) order_.grow(text_);
    // Nobody asks for what would follow the last token.
    const bool isFull = model_.sequence().size() >= static_cast<std::size_t>(model_.contextSize());
    if (generated_ == order_.request.maxTokens || isFull) return {};
    if (const auto decoded = model_.sequence().append(std::array{token}, watch_); !decoded) return decoded;
  }
  return {};
}

// Adds the token's text. False when it is the last one.
bool CandidateWriter::extend(Token token) {
  const bool doubtful = isDoubtful(token);
  bytes_.append(model_.vocabulary().piece(token));
  const auto before = std::exchange(text_, bytes_.text());
  if (doubtful && text::wordCount(text_) >= 2) {
    text_.resize(confidentLength(before, text_));
    cutAtStop();
    return false;
  }
  return !cutAtStop();
}

bool CandidateWriter::isDoubtful(Token token) const {
  if (order_.confidence <= 0) return false;
  const auto logits = model_.sequence().logits();
  return logits[static_cast<std::size_t>(token)] - logSumExp(logits) < std::log(order_.confidence);
}

bool CandidateWriter::cutAtStop() {
  const auto stop = firstStop(text_, order_.request.stop);
  if (stop) text_.resize(*stop);
  return stop.has_value();
}

}  // namespace nimbletype
