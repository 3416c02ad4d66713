#include "engines/llama/vocabulary.h"

#include <llama.h>

#include <exception>
#include <limits>
#include <vector>

namespace nimbletype {
namespace {

// Beyond the text's own: room for tokens the vocabulary puts around it.
constexpr std::size_t tokenisationMargin = 8;

std::optional<Tokens> tokenised(const llama_vocab* vocab, const std::string& text) {
  if (text.size() > std::numeric_limits<std::int32_t>::max() - tokenisationMargin) return std::nullopt;
  Tokens tokens(text.size() + tokenisationMargin);
  const auto attempt = [&] {
    return llama_tokenize(vocab, text.data(), static_cast<std::int32_t>(text.size()), tokens.data(),
                          static_cast<std::int32_t>(tokens.size()), false, false);
  };
  auto count = attempt();
  if (count < 0 && count != std::numeric_limits<std::int32_t>::min()) {
    tokens.resize(static_cast<std::size_t>(-count));
    count = attempt();
  }
  if (count < 0) return std::nullopt;
  tokens.resize(static_cast<std::size_t>(count));
  return tokens;
}

}  // namespace

int Vocabulary::size() const {
  return llama_vocab_n_tokens(vocab_);
}

std::optional<Token> Vocabulary::start() const {
  const auto bos = llama_vocab_bos(vocab_);
  if (!llama_vocab_get_add_bos(vocab_) || bos == LLAMA_TOKEN_NULL) return std::nullopt;
  return bos;
}

Token Vocabulary::neutralToken() const {
  const auto bos = llama_vocab_bos(vocab_);
  return bos == LLAMA_TOKEN_NULL ? 0 : bos;
}

bool Vocabulary::endsGeneration(Token token) const {
  return llama_vocab_is_eog(vocab_, token);
}

std::optional<Tokens> Vocabulary::tokens(const std::string& text) const try {
  auto tokens = tokenised(vocab_, text);
  if (const auto first = start(); tokens && first) tokens->insert(tokens->begin(), *first);
  return tokens;
} catch (const std::exception&) {
  return std::nullopt;
}

std::string Vocabulary::piece(Token token) const {
  std::string bytes(32, '\0');
  const auto attempt = [&] {
    return llama_token_to_piece(vocab_, token, bytes.data(), static_cast<std::int32_t>(bytes.size()), 0,
                                false);
  };
  auto length = attempt();
  if (length < 0) {
    bytes.resize(static_cast<std::size_t>(-length));
    length = attempt();
  }
  bytes.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
  return bytes;
}

const PieceIndex& Vocabulary::pieces() const {
  if (!pieces_) {
    std::vector<std::string> all;
    all.reserve(static_cast<std::size_t>(size()));
    for (Token token = 0; token < size(); ++token) all.push_back(endsGeneration(token) ? "" : piece(token));
    pieces_ = std::make_unique<PieceIndex>(all);
  }
  return *pieces_;
}

}  // namespace nimbletype
