#include "engines/llama/token_cache.h"

#include <gtest/gtest.h>

#include <tuple>

namespace nimbletype {
namespace {

TEST(TokenCache, KeepsTheCommonPrefixButNeverTheWholePrompt) {
  const std::tuple<Tokens, Tokens, std::size_t> table[] = {{{}, {1, 2, 3}, 0},
                                                           {{1, 2, 3}, {1, 2, 3}, 2},
                                                           {{1, 2, 3}, {1, 2, 3, 4}, 3},
                                                           {{1, 2, 3, 4}, {1, 2, 3}, 2},
                                                           {{1, 2, 3}, {1, 9, 3, 4}, 1},
                                                           {{7, 8}, {1, 2}, 0},
                                                           {{1}, {1}, 0},
                                                           {{1, 2}, {}, 0}};
  for (const auto& [cached, prompt, kept] : table)
    EXPECT_EQ(reusableTokens(cached, prompt), kept) << testing::PrintToString(prompt);
}

TEST(TokenCache, LongTextsKeepTheirBeginningForHundredsOfTokens) {
  constexpr std::size_t capacity = 2000;
  EXPECT_EQ(windowStart(capacity, capacity), 0U);
  const auto start = windowStart(capacity + 1, capacity);
  std::size_t moves = 0;
  for (std::size_t count = capacity + 1; count < capacity + 1025; ++count) {
    ASSERT_LE(count - windowStart(count, capacity), capacity);
    ASSERT_GE(count - windowStart(count, capacity), capacity - 512);
    if (windowStart(count, capacity) != windowStart(count - 1, capacity)) ++moves;
  }
  EXPECT_GT(start, 0U);
  EXPECT_EQ(moves, 2U);
}

}  // namespace
}  // namespace nimbletype
