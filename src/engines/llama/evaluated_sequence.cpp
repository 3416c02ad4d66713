#include "engines/llama/evaluated_sequence.h"

#include <llama.h>

#include <algorithm>
#include <exception>

namespace nimbletype {
namespace {

constexpr std::size_t chunkSize = 512;
constexpr llama_seq_id sequence = 0;

int decodeStatus(llama_context* context, std::span<const Token> chunk) try {
  Tokens tokens(chunk.begin(), chunk.end());  // llama.cpp wants them writable
  return llama_decode(context, llama_batch_get_one(tokens.data(), static_cast<std::int32_t>(tokens.size())));
} catch (const std::exception&) {
  return -3;  // what llama.cpp itself reports for a failed computation
}

}  // namespace

EvaluatedSequence::EvaluatedSequence(llama_context* context, int vocabularySize, int window)
    : context_(context), vocabularySize_(vocabularySize), window_(window) {}

std::size_t EvaluatedSequence::keepCommonPrefix(std::span<const Token> prompt) {
  const auto keep = reusableTokens(tokens_, prompt);
  return trim(keep) ? keep : 0;
}

std::expected<void, RuntimeFailure> EvaluatedSequence::append(std::span<const Token> tokens,
                                                              const JobWatch& watch) {
  while (!tokens.empty()) {
    const auto chunk = tokens.first(std::min(tokens.size(), chunkSize));
    if (watch.hooks && watch.hooks->beforeChunk) watch.hooks->beforeChunk(tokens_.size());
    if (watch.isStale()) return std::unexpected(RuntimeFailure{});
    if (const auto decoded = decode(chunk, watch); !decoded) return decoded;
    tokens = tokens.subspan(chunk.size());
  }
  return {};
}

std::expected<void, RuntimeFailure> EvaluatedSequence::decode(std::span<const Token> chunk,
                                                              const JobWatch& watch) {
  constexpr int aborted = 2;
  const int status = decodeStatus(context_, chunk);
  if (status == 0) {
    tokens_.insert(tokens_.end(), chunk.begin(), chunk.end());
    return {};
  }
  if (status < 0)
    clear();
  else
    trim(tokens_.size());
  if (status == aborted && watch.isStale()) return std::unexpected(RuntimeFailure{});
  return std::unexpected(RuntimeFailure{RuntimeFailure::Case::decoding, status});
}

bool EvaluatedSequence::trim(std::size_t length) {
  auto* memory = llama_get_memory(context_);
  if (length == 0) {
    clear();
    return true;
  }
  if (!llama_memory_seq_rm(memory, sequence, static_cast<llama_pos>(length), -1) ||
      !holdsStateBefore(length)) {
    clear();
    return false;
  }
  tokens_.resize(std::min(tokens_.size(), length));
  return true;
}

// A cache of the window's size alone forgets what lies before it, and says nothing when asked to go back
// there.
bool EvaluatedSequence::holdsStateBefore(std::size_t length) const {
  if (window_ <= 0) return true;
  const auto oldest = llama_memory_seq_pos_min(llama_get_memory(context_), sequence);
  return oldest >= 0 && oldest <= std::max(0, static_cast<int>(length) - window_);
}

void EvaluatedSequence::clear() {
  llama_memory_clear(llama_get_memory(context_), false);
  tokens_.clear();
}

std::span<const float> EvaluatedSequence::logits() const {
  const float* logits = llama_get_logits_ith(context_, -1);
  return {logits, logits ? static_cast<std::size_t>(vocabularySize_) : 0};
}

}  // namespace nimbletype
