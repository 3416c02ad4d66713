#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace nimbletype {

using Token = std::int32_t;
using Tokens = std::vector<Token>;

std::size_t commonPrefix(std::span<const Token> a, std::span<const Token> b);

// How many evaluated tokens stay when `prompt` comes next. Its last token is always evaluated again, for
// there are no logits without that.
std::size_t reusableTokens(std::span<const Token> cached, std::span<const Token> prompt);

// The part of a long text that fits into `capacity` tokens: where its tail begins. The beginning moves in
// large steps only, so that what is evaluated keeps its first tokens while the text grows.
std::size_t windowStart(std::size_t count, std::size_t capacity);

}  // namespace nimbletype
