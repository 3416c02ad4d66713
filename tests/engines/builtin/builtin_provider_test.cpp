#include "engines/builtin/builtin_provider.h"

#include "engines/provider/provider_hub.h"
#include "tests/engines/writing/runtime_fixture.h"

namespace nimbletype {
namespace {

class BuiltInProviderTest : public testing::Test {
 protected:
  struct Locator : ModelLocator {
    std::optional<std::string> path;
    std::optional<std::string> installedModel() override { return path; }
    ModelPhase phase() const override { return {}; }
  };

  template <typename Answer, typename Start>
  Answer answer(Start start) {
    std::optional<Answer> result;
    const Task task = start([&](Answer each) { result = std::move(each); });
    EXPECT_FALSE(result.has_value()) << "answered before its turn";
    loop.advance(Milliseconds(0));
    loop.runUntil([&] { return result.has_value(); });
    return std::move(*result);
  }

  CompletionResult complete(const CompletionRequest& request) {
    return answer<CompletionResult>([&](auto done) { return provider->complete(request, {}, done); });
  }

  static CompletionRequest request(std::string prompt, int maxTokens = 6) {
    CompletionRequest request;
    request.rawPrompt = std::move(prompt);
    request.maxTokens = maxTokens;
    request.temperature = 0;
    return request;
  }

  WaitingMainLoop loop;
  RecordingSystemLog log;
  Locator locator;
  std::unique_ptr<CompletionProvider> provider = std::make_unique<BuiltInProvider>(loop, locator, log);
};

TEST_F(BuiltInProviderTest, WithoutAModelItSaysWhatToDo) {
  EXPECT_EQ(complete(request("Thank you")).error().message,
            "Download the Nimbletype model in Settings first");
  const auto alternatives = answer<std::expected<std::vector<std::string>, ProviderError>>(
      [&](auto done) { return provider->alternatives(request("Thank you"), 3, {}, done); });
  EXPECT_EQ(alternatives.error().message, "Download the Nimbletype model in Settings first");
  EXPECT_EQ(answer<ProviderStatus>([&](auto done) { return provider->status(done); }),
            ProviderStatus::problem("Download the model to start"));
}

TEST_F(BuiltInProviderTest, WritesWithTheInstalledModel) {
  locator.path = starterModel;
  EXPECT_EQ(answer<ProviderStatus>([&](auto done) { return provider->status(done); }),
            ProviderStatus::good("Downloaded"));
  const auto completion = complete(request("I hope this email finds")).value();
  EXPECT_TRUE(completion.text.starts_with(" you well")) << completion.text;
  EXPECT_GT(completion.cost.promptTokens, 3);
}

TEST_F(BuiltInProviderTest, PreparationLeavesOneTokenToEvaluate) {
  locator.path = starterModel;
  const auto prepared = answer<CompletionResult>(
      [&](auto done) { return provider->prepare(request("I hope this email finds"), done); });
  EXPECT_EQ(prepared->text, "");
  const auto cost = complete(request("I hope this email finds"))->cost;
  EXPECT_EQ(cost.reusedTokens, cost.promptTokens - 1);
}

TEST_F(BuiltInProviderTest, AlternativesAreDifferent) {
  locator.path = starterModel;
  const auto list = answer<std::expected<std::vector<std::string>, ProviderError>>([&](auto done) {
                      return provider->alternatives(request("Could we meet on"), 4, {}, done);
                    }).value();
  ASSERT_GE(list.size(), 2U);
  for (std::size_t i = 1; i < list.size(); ++i) EXPECT_NE(list[0], list[i]);
}

TEST_F(BuiltInProviderTest, AWrongFileFailsWithASentence) {
  locator.path = "models/starter/MODEL_CARD.md";
  EXPECT_EQ(complete(request("Thank you")).error().message, "The model file couldn't be loaded");
}

TEST(ProviderStatus, LabelsAndEquality) {
  EXPECT_EQ(ProviderStatus{}.label(), "Not checked yet");
  EXPECT_EQ((ProviderStatus{ProviderStatus::Case::checking, ""}.label()), "Checking…");
  EXPECT_EQ(ProviderStatus::good("Ready").label(), "Ready");
  EXPECT_NE(ProviderStatus::good("Ready"), ProviderStatus::problem("Ready"));
}

TEST_F(BuiltInProviderTest, TheHubFindsTheEngineOfAKind) {
  auto* built = provider.get();
  std::vector<std::unique_ptr<CompletionProvider>> providers;
  providers.push_back(std::move(provider));
  const ProviderHub hub(std::move(providers));
  EXPECT_EQ(hub.provider(EngineKind::builtIn), built);
  EXPECT_EQ(hub.provider(EngineKind::apple), nullptr);
}

TEST_F(BuiltInProviderTest, OperationsItLacksAnswerEmpty) {
  std::optional<std::size_t> models;
  const auto task = provider->models([&](auto names) { models = names.value().size(); });
  EXPECT_EQ(models, 0U);
}

}  // namespace
}  // namespace nimbletype
