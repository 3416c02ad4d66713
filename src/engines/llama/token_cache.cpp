#include "engines/llama/token_cache.h"

#include <algorithm>

namespace nimbletype {

std::size_t commonPrefix(std::span<const Token> a, std::span<const Token> b) {
  return static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
}

std::size_t reusableTokens(std::span<const Token> cached, std::span<const Token> prompt) {
  if (prompt.empty()) return 0;
  return std::min(commonPrefix(cached, prompt), prompt.size() - 1);
}

std::size_t windowStart(std::size_t count, std::size_t capacity) {
  constexpr std::size_t step = 512;
  if (count <= capacity) return 0;
  const auto excess = count - capacity;
  return std::min((excess + step - 1) / step * step, count);
}

}  // namespace nimbletype
