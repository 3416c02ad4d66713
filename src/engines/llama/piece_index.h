#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engines/llama/token_cache.h"

namespace nimbletype {

// The tokens of a vocabulary in the order of their bytes, to find those that begin with given bytes.
class PieceIndex {
 public:
  // The bytes of each token; a token without bytes is never found.
  explicit PieceIndex(std::span<const std::string> pieces);

  std::string_view piece(Token token) const;
  // Tokens whose bytes begin with `text`, `text` itself included.
  std::span<const Token> beginningWith(std::string_view text) const;
  // Tokens whose bytes are a part of `text` from its start, and not all of it.
  Tokens properPrefixesOf(std::string_view text) const;

 private:
  std::string bytes_;
  std::vector<std::uint32_t> offsets_;  // where each token's bytes begin, and one past the last
  Tokens sorted_;
};

}  // namespace nimbletype
