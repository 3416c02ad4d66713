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

TEST_F(LlamaRuntimeTest, TheTokenLimitHolds) {
  EXPECT_EQ(run(job("Thank you for your", 0)).value().text, "");
  EXPECT_EQ(run(job("Thank you for your", -3)).value().text, "");
  for (const int limit : {1, 2, 5})
    EXPECT_EQ(run(job("Thank you for your", limit)).value().generatedTokens, limit);
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

TEST_F(LlamaRuntimeTest, StopSequencesCutTheText) {
  auto order = job("I hope this email finds", 12);
  order.request.stop = {".", "well"};
  EXPECT_EQ(run(order).value().text, " you ");
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
  order.candidates = 4;
  const auto several = run(order).value();
  EXPECT_EQ(several.text, single.text);
  EXPECT_EQ(several.alternatives.size(), 3U);
  EXPECT_TRUE(single.alternatives.empty());
  const std::set<std::string> different(several.alternatives.begin(), several.alternatives.end());
  EXPECT_GT(different.size(), 1U);
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
  struct Case {
    const char *prompt, *begins;
    bool spaceTyped;
  };
  const Case cases[] = {
      {"I'll be out of the off", "ice", false}, {"I'll be out of the o", "ffice", false},
      {"I would like to sched", "ule", false},  {"Thank you", " for", false},
      {"Please let me know ", "if you", true},  {"Thank y", "ou", false},
  };
  for (const auto& each : cases) {
    auto order = job(each.prompt, 6);
    order.request.healLast = !each.spaceTyped;
    order.request.spaceTyped = each.spaceTyped;
    order.confidence = 0.15;
    EXPECT_TRUE(run(order).value().text.starts_with(each.begins))
        << each.prompt << "|" << run(order).value().text;
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

TEST_F(LlamaRuntimeTest, HealedAlternativesAreDifferentWords) {
  auto order = job("Let us go to the st", 3);
  order.request.healLast = true;
  order.candidates = 3;
  const auto output = run(order).value();
  EXPECT_NE(output.text, output.alternatives.at(0));
  EXPECT_NE(output.text, output.alternatives.at(1));
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

}  // namespace
}  // namespace nimbletype
