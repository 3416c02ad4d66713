#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace nimbletype {

// Natural logarithm of the sum of the exponentials of `logits`.
double logSumExp(std::span<const float> logits);

// How much of `after` to keep when its last token, the one that made it of `before`, was a doubtful one.
// Never a part of a word: a doubt inside a word puts the whole word in doubt.
std::size_t confidentLength(std::string_view before, std::string_view after);

}  // namespace nimbletype
