#include "engines/writing/llama_runtime.h"

#include <set>

#include "tests/engines/writing/runtime_fixture.h"

namespace nimbletype {
namespace {

using LlamaRuntimeTest = RuntimeFixture;

std::string longText(std::size_t sentences) {
  std::string text;
  for (std::size_t i = 0; i < sentences; ++i)
    text += "The meeting on Friday was moved to room " + std::to_string(i) + ". ";
  return text;
}

TEST_F(LlamaRuntimeTest, EvaluatesOnlyWhatIsNew) {
  const auto first = run(job("Thank you for your message. I will")).value();
  EXPECT_EQ(first.reusedTokens, 0);
  const auto same = run(job("Thank you for your message. I will")).value();
  EXPECT_EQ(same.reusedTokens, same.promptTokens - 1);
  const auto longer = run(job("Thank you for your message. I will call")).value();
  EXPECT_EQ(longer.reusedTokens, first.promptTokens);
  EXPECT_GT(longer.promptTokens, first.promptTokens);
  const auto shorter = run(job("Thank you for your message.")).value();
  EXPECT_EQ(shorter.reusedTokens, shorter.promptTokens - 1);
  EXPECT_EQ(run(job("Looking forward")).value().reusedTokens, 1);  // the start token
}

TEST_F(LlamaRuntimeTest, AcceptedTextIsNotEvaluatedAgain) {
  const auto written = run(job("Thank you for your", 4)).value();
  const auto next = run(job("Thank you for your" + written.text)).value();
  // The last token of a suggestion is never evaluated while it is written.
  EXPECT_EQ(next.reusedTokens, written.promptTokens + 3);
}

TEST_F(LlamaRuntimeTest, AnswersTheSameWhateverWasEvaluatedBefore) {
  const auto alone = run(job("I hope this email finds", 8)).value();
  run(job("I hope this email finds you very well and in good health", 8));
  EXPECT_EQ(run(job("I hope this email finds", 8)).value().text, alone.text);
  EXPECT_TRUE(alone.text.starts_with(" you well."));
}

TEST_F(LlamaRuntimeTest, TheTokenLimitAndStopSequencesHold) {
  for (const int limit : {-3, 0, 1, 2, 5}) {
    const auto output = run(job("Thank you for your", limit)).value();
    EXPECT_EQ(output.generatedTokens, std::max(limit, 0));
    EXPECT_EQ(output.text.empty(), limit <= 0);
  }
  auto order = job("I hope this email finds", 12);
  order.request.stop = {".", "well"};
  EXPECT_EQ(run(order).value().text, " you ");
}

TEST_F(LlamaRuntimeTest, TemperatureZeroIgnoresTheSeedAndSamplingFollowsIt) {
  const auto text = [&](double temperature, std::uint32_t seed) {
    auto order = job("We are going to", 12, temperature);
    order.seed = seed;
    return run(order).value().text;
  };
  EXPECT_EQ(text(0, 1), text(0.04, 2));
  EXPECT_EQ(text(1.5, 7), text(1.5, 7));
  std::set<std::string> sampled;
  for (std::uint32_t seed = 1; seed < 6; ++seed) sampled.insert(text(1.5, seed));
  EXPECT_GT(sampled.size(), 2U);
}

TEST_F(LlamaRuntimeTest, DoubtEndsASuggestionAfterItsFirstWord) {
  auto order = job("She looked at him and", 12);
  const auto all = run(order).value();
  order.confidence = 0.999;
  const auto sure = run(order).value();
  EXPECT_LT(sure.text.size(), all.text.size());
  EXPECT_TRUE(all.text.starts_with(sure.text));
  EXPECT_NE(sure.text.find_first_not_of(' '), std::string::npos);
}

TEST_F(LlamaRuntimeTest, WritesSeveralCandidatesBehindOnePrompt) {
  auto order = job("Could we meet on", 8);
  const auto single = run(order).value();
  EXPECT_TRUE(single.alternatives.empty());
  order.candidates = 4;
  const auto several = run(order).value();
  EXPECT_EQ(several.text, single.text);
  EXPECT_EQ(several.alternatives.size(), 3U);
  EXPECT_GT(std::set(several.alternatives.begin(), several.alternatives.end()).size(), 1U);
  order = job("Let us go to the st", 3);
  order.request.healLast = true;
  order.candidates = 3;
  const auto healed = run(order).value();
  for (const auto& other : healed.alternatives) EXPECT_NE(other, healed.text) << "each is another word";
  EXPECT_EQ(healed.alternatives.size(), 2U);
}

TEST_F(LlamaRuntimeTest, TextGrowsOnTheMainThread) {
  std::vector<std::string> grown;
  std::optional<LlamaRuntime::Result> result;
  const auto task = runtime().run(job("I hope this email finds", 6),
                                  {[&](const std::string& text) { grown.push_back(text); },
                                   [&](auto answer) { result = std::move(answer); }});
  loop.runUntil([&] { return result.has_value(); });
  ASSERT_FALSE(grown.empty());
  for (const auto& text : grown) EXPECT_TRUE(result->value().text.starts_with(text)) << text;
}

TEST_F(LlamaRuntimeTest, CharactersComeWhole) {
  // Emoji are spelled by single bytes here: cut anywhere, the text stays valid.
  for (int limit = 1; limit <= 6; ++limit) {
    const auto text = run(job("🚀🚀🚀🚀🚀🚀🚀🚀", limit, 1.0)).value().text;
    EXPECT_FALSE(text.ends_with("\uFFFD")) << text;
  }
}

TEST_F(LlamaRuntimeTest, LongPromptsKeepTheirEvaluatedBeginning) {
  const auto base = longText(220);  // more than the context holds
  const auto first = run(job(base, 10)).value();
  EXPECT_LE(first.promptTokens, 2048 - 10);
  for (const char* more : {"We", "We will", "We will meet"}) {
    const auto next = run(job(base + more, 10)).value();
    EXPECT_GE(next.reusedTokens, first.promptTokens - 1) << more;
    EXPECT_LE(next.promptTokens, 2048 - 10);
  }
  EXPECT_TRUE(run(job(base, 5000)).has_value());
}

TEST_F(LlamaRuntimeTest, HealsTheWordAtTheCaret) {
  const std::pair<std::string, const char*> cases[] = {
      {"I'll be out of the off", "ice"}, {"I'll be out of the o", "ffice"},
      {"I would like to sched", "ule"},  {"Thank you", " for"},
      {"Please let me know ", "if you"}, {"Thank y", "ou"}};
  for (const auto& [prompt, begins] : cases) {
    auto order = job(prompt, 6);
    order.request.spaceTyped = prompt.ends_with(' ');
    order.request.healLast = !order.request.spaceTyped;
    order.confidence = 0.15;
    const auto text = run(order).value().text;
    EXPECT_TRUE(text.starts_with(begins)) << prompt << "|" << text;
  }
}

TEST_F(LlamaRuntimeTest, TypingAHealedWordKeepsThePromptEvaluated) {
  auto order = job("I'll be out of the o", 4);
  order.request.healLast = true;
  run(order);
  for (const char* prompt : {"I'll be out of the of", "I'll be out of the off", "I'll be out of the offi"}) {
    order.request.rawPrompt = prompt;
    const auto output = run(order).value();
    EXPECT_EQ(output.reusedTokens, output.promptTokens - 1);
  }
}

TEST_F(LlamaRuntimeTest, AnotherPathLoadsAnotherModel) {
  run(job("Thank you"));
  ASSERT_EQ(log.lines.size(), 1U);
  EXPECT_EQ(log.lines[0].category, "model");
  run(job("Thank you"));
  EXPECT_EQ(log.lines.size(), 1U);
  auto other = job("Thank you");
  other.modelPath = SLIDING_WINDOW_MODEL;
  const auto output = run(other).value();
  EXPECT_EQ(log.lines.size(), 2U);
  EXPECT_EQ(output.reusedTokens, 0);
  EXPECT_EQ(run(job("Thank you")).value().reusedTokens, 0);
}

// Models whose layers look back only some tokens: what was evaluated must stay usable all the same.
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
