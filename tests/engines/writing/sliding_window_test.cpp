// Models whose layers look back only some tokens: what was evaluated must stay usable all the same.
#include "tests/engines/writing/runtime_fixture.h"

namespace nimbletype {
namespace {

class SlidingWindow : public RuntimeFixture {
 protected:
  LlamaRuntime::Output evaluated(const std::string& prompt, int maxTokens = 0) {
    auto order = job(prompt, maxTokens);
    order.modelPath = SLIDING_WINDOW_MODEL;
    return run(order).value();
  }
  // One token for each letter, many windows long.
  static std::string letters(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += static_cast<char>('a' + i * 7 % 26);
    return text;
  }
};

TEST_F(SlidingWindow, TypingOnKeepsAllThatIsEvaluated) {
  const auto text = letters(1500);
  EXPECT_EQ(evaluated(text).reusedTokens, 0);
  EXPECT_EQ(evaluated(text).reusedTokens, 1500);
  EXPECT_EQ(evaluated(text + "x").reusedTokens, 1501);
  EXPECT_EQ(evaluated(text + "x word").reusedTokens, 1502);
  EXPECT_EQ(evaluated(text + "x").reusedTokens, 1501);
}

TEST_F(SlidingWindow, GoingBackFarKeepsWhatIsBeforeThePlaceUnlessTheCacheIsOfTheWindow) {
  const auto text = letters(1500);
  for (const bool full : {true, false}) {
    options.fullWindowCache = full;
    restart();
    const auto fresh = evaluated(text.substr(0, 300) + "!", 8).text;
    evaluated(text);
    const auto back = evaluated(text.substr(0, 300) + "!", 8);
    EXPECT_EQ(back.reusedTokens, full ? 301 : 0);
    EXPECT_EQ(back.text, fresh);
  }
}

}  // namespace
}  // namespace nimbletype
