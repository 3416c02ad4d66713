#include "engines/writing/healing.h"

#include <gtest/gtest.h>

#include <map>
#include <tuple>

#include "engines/writing/text_generation.h"
#include "tests/engines/writing/half_typed_words.h"

namespace nimbletype {
namespace {

void expectHealed(const char* raw, bool healLast, bool spaceTyped, const char* prompt, const char* required) {
  CompletionRequest request;
  request.rawPrompt = raw;
  request.healLast = healLast;
  request.spaceTyped = spaceTyped;
  const auto healed = healedPrompt(request);
  EXPECT_EQ(healed.prompt, prompt) << raw;
  EXPECT_EQ(healed.required, required) << raw;
}

TEST(HealedPrompt, TakesTheUnfinishedWordWithItsBlank) {
  const std::tuple<const char*, const char*, const char*> inside[] = {
      {"out of the off", "out of the", " off"},
      {"Hi Anna,\n\nThan", "Hi Anna,\n\n", "Than"},
      {"Than", "", "Than"},
      {"I don't thi", "I don't", " thi"},
      {"I don'", "I", " don'"},
      {"I don’t", "I", " don’t"},
      {"the 'off", "the '", "off"},
      {"a re-sch", "a re-", "sch"},
      {"see you,", "see you,", ""},
      {"it costs 25", "it costs 25", ""},
      {"Viele Grü", "Viele", " Grü"},
      {"今日はいい天気", "今日はいい天気", ""},
      {"x abcdefghijklmnopqrstuvwxyzabcdefgh", "x abcdefghijklmnopqrstuvwxyzabcdefgh", ""},
      {"", "", ""}};
  for (const auto& [raw, prompt, required] : inside) expectHealed(raw, true, false, prompt, required);
  expectHealed("out of the off", false, false, "out of the off", "");
  for (const bool healLast : {true, false}) expectHealed("out of the ", healLast, true, "out of the", " ");
  for (const char* raw : {"out of the  ", "Hi Anna,\n ", ""}) expectHealed(raw, false, true, raw, "");
}

class HealingPaths : public testing::Test {
 protected:
  // Logits that give these pieces their weight and all others next to nothing.
  std::vector<float> weighted(const std::map<std::string, float>& weights) const {
    std::vector<float> all(pieces.size(), -20);
    for (std::size_t i = 0; i < pieces.size(); ++i)
      if (const auto weight = weights.find(pieces[i]); weight != weights.end()) all[i] = weight->second;
    return all;
  }

  std::vector<std::string> spelled(const std::string& required, std::size_t wanted, int evaluations = 4) {
    const auto paths = healingPaths(index, required, wanted, evaluations, [&](const Tokens& path) {
      std::string text;
      for (const auto token : path) text += index.piece(token);
      asked.push_back(text);
      logits = weighted(answers[text]);
      return std::span<const float>(logits);
    });
    std::vector<std::string> texts;
    for (const auto& path : paths.value()) {
      texts.emplace_back();
      for (const auto token : path.tokens) (texts.back() += index.piece(token)) += '|';
    }
    return texts;
  }

  const std::vector<std::string> pieces{"",  " of", " office", " offer", " off", "ice",  "f",    "fice",
                                        " ", " o",  "o",       "fer",    " on",  "\xC3", "\xA9", " caf"};
  const PieceIndex index{pieces};
  std::map<std::string, std::map<std::string, float>> answers;
  std::vector<std::string> asked;
  std::vector<float> logits;
};

TEST_F(HealingPaths, TokensThatBeginWithTheLettersComeByProbability) {
  answers[""] = {{" office", 3}, {" offer", 2}, {" off", 1}, {" on", 9}, {" of", 0}};
  EXPECT_EQ(spelled(" off", 3), (std::vector<std::string>{" office|", " offer|", " off|"}));
  EXPECT_EQ(asked, std::vector<std::string>{""});
  // " of" is likely as a word of its own, but hardly ever goes on with "f".
  answers[""] = {{" of", 9}, {" office", 5}};
  answers[" of"] = {{" ", 9}, {"f", -5}};
  EXPECT_EQ(spelled(" off", 1), std::vector<std::string>{" office|"});
  EXPECT_EQ(asked, (std::vector<std::string>{"", "", " of"}));
}

TEST_F(HealingPaths, SpellsAcrossSeveralTokens) {
  answers = {{"", {{" of", 9}}}, {" of", {{"fice", 9}}}};
  EXPECT_EQ(spelled(" offi", 1), std::vector<std::string>{" of|fice|"});
  answers = {{"", {{" caf", 9}}}, {" caf", {{"\xC3", 9}}}, {" caf\xC3", {{"\xA9", 9}}}};
  EXPECT_EQ(spelled(" café", 1), std::vector<std::string>{" caf|\xC3|\xA9|"});
}

TEST_F(HealingPaths, GivesUpAfterItsEvaluations) {
  answers = {{"", {{" ", 9}}}, {" ", {{"o", 9}}}, {" o", {{"f", 9}}}, {" of", {{"f", 9}}}};
  EXPECT_TRUE(spelled(" offzz", 1, 2).empty());
  EXPECT_EQ(asked.size(), 3U);
  EXPECT_TRUE(spelled("zz", 1).empty());
}

TEST_F(HealingPaths, ReportsFailures) {
  const auto paths = healingPaths(index, " off", 1, 4, [](const Tokens&) {
    return std::expected<std::span<const float>, RuntimeFailure>(std::unexpected(RuntimeFailure{}));
  });
  EXPECT_EQ(paths.error().reason, RuntimeFailure::Case::cancelled);
}

TEST(Healing, CompletesFarMoreHalfTypedWordsThanPlainContinuation) {
  auto model = LlamaModel::load("models/starter/starter-q8_0.gguf", {}).value();
  int plain = 0, healed = 0;
  const auto words = readHalfTypedWords("tests/engines/writing/half_typed_words.txt");
  for (const auto& word : words) {
    for (const bool heal : {false, true}) {
      GenerationOrder order;
      order.request.rawPrompt = word.before;
      order.request.maxTokens = 4;
      order.request.temperature = 0;
      order.request.healLast = heal;
      (heal ? healed : plain) += completesWord(generate(*model, order, {})->text, word.rest);
    }
  }
  RecordProperty("plain", plain);
  RecordProperty("healed", healed);
  EXPECT_GE(words.size(), 200U);
  EXPECT_GT(healed, plain * 2);
  EXPECT_GT(healed * 100, static_cast<int>(words.size()) * 80);
}

}  // namespace
}  // namespace nimbletype
