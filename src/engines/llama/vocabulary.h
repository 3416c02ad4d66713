#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engines/llama/piece_index.h"
#include "engines/llama/token_cache.h"

struct llama_vocab;

namespace nimbletype {

// The words of a loaded model: text to tokens and back.
class Vocabulary {
 public:
  explicit Vocabulary(const llama_vocab* vocab) : vocab_(vocab) {}

  int size() const;
  // Put before a text, where the vocabulary asks for it.
  std::optional<Token> start() const;
  // Stands where there is no text at all.
  Token neutralToken() const;
  bool endsGeneration(Token token) const;
  // The start token, then the text; none when the text cannot be tokenised.
  std::optional<Tokens> tokens(const std::string& text) const;
  std::string piece(Token token) const;
  // Sorted at the first use, which takes a moment.
  const PieceIndex& pieces() const;

 private:
  const llama_vocab* vocab_;
  mutable std::unique_ptr<PieceIndex> pieces_;
};

}  // namespace nimbletype
