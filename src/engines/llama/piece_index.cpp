#include "engines/llama/piece_index.h"

#include <algorithm>

namespace nimbletype {

PieceIndex::PieceIndex(std::span<const std::string> pieces) {
  offsets_.reserve(pieces.size() + 1);
  offsets_.push_back(0);
  for (const auto& piece : pieces) {
    bytes_ += piece;
    offsets_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    if (!piece.empty()) sorted_.push_back(static_cast<Token>(offsets_.size()) - 2);
  }
  std::ranges::stable_sort(sorted_, {}, [this](Token token) { return piece(token); });
}

std::string_view PieceIndex::piece(Token token) const {
  const auto i = static_cast<std::size_t>(token);
  return std::string_view(bytes_).substr(offsets_[i], offsets_[i + 1] - offsets_[i]);
}

std::span<const Token> PieceIndex::beginningWith(std::string_view text) const {
  const auto found =
      std::ranges::equal_range(sorted_, text, {}, [&](Token t) { return piece(t).substr(0, text.size()); });
  return {found.begin(), found.end()};
}

Tokens PieceIndex::properPrefixesOf(std::string_view text) const {
  Tokens prefixes;
  for (std::size_t length = 1; length < text.size(); ++length) {
    const auto same =
        std::ranges::equal_range(sorted_, text.substr(0, length), {}, [&](Token t) { return piece(t); });
    prefixes.insert(prefixes.end(), same.begin(), same.end());
  }
  return prefixes;
}

}  // namespace nimbletype
