#include "engines/builtin/builtin_provider.h"

#include "engines/provider/provider_hub.h"
#include "tests/engines/servers/provider_fixture.h"
#include "tests/engines/writing/runtime_fixture.h"

namespace nimbletype {
namespace {

class BuiltInProviderTest : public AskingTest {
 protected:
  struct Locator : ModelLocator {
    std::optional<std::string> path;
    std::optional<std::string> installedModel() override { return path; }
    ModelPhase phase() const override { return {}; }
  };

  void await(const std::function<bool()>& answered) override {
    loop.advance(Milliseconds(0));
    loop.runUntil(answered);
  }

  WaitingMainLoop loop;
  RecordingSystemLog log;
  Locator locator;
  std::unique_ptr<CompletionProvider> provider = std::make_unique<BuiltInProvider>(loop, locator, log);
  const CompletionRequest email = request("I hope this email finds", 6);
};

TEST_F(BuiltInProviderTest, WithoutAGoodModelItSaysWhatToDo) {
  const std::string download = "Download the Nimbletype model in Settings first";
  EXPECT_EQ(complete(*provider, email).error().message, download);
  EXPECT_EQ(alternatives(*provider, email, 3).error().message, download);
  EXPECT_EQ(status(*provider), ProviderStatus::problem("Download the model to start"));
  locator.path = "models/starter/MODEL_CARD.md";
  EXPECT_EQ(complete(*provider, email).error().message, "The model file couldn't be loaded");
}

TEST_F(BuiltInProviderTest, WritesWithTheInstalledModel) {
  locator.path = starterModel;
  EXPECT_EQ(status(*provider), ProviderStatus::good("Downloaded"));
  const auto prepared = answer<CompletionResult>([&](auto done) { return provider->prepare(email, done); });
  EXPECT_EQ(prepared->text, "");
  const auto completion = complete(*provider, email).value();
  EXPECT_TRUE(completion.text.starts_with(" you well")) << completion.text;
  EXPECT_GT(completion.cost.promptTokens, 3);
  EXPECT_EQ(completion.cost.reusedTokens, completion.cost.promptTokens - 1) << "all but one was prepared";
  const auto list = alternatives(*provider, request("Could we meet on", 6), 4).value();
  ASSERT_GE(list.size(), 2U);
  for (std::size_t i = 1; i < list.size(); ++i) EXPECT_NE(list[0], list[i]);
}

TEST_F(BuiltInProviderTest, TheHubFindsTheEngineOfAKind) {
  std::optional<std::size_t> models;
  const auto task = provider->models([&](auto names) { models = names.value().size(); });
  EXPECT_EQ(models, 0U) << "there is nothing to choose";
  auto* built = provider.get();
  std::vector<std::unique_ptr<CompletionProvider>> providers;
  providers.push_back(std::move(provider));
  const ProviderHub hub(std::move(providers));
  EXPECT_EQ(hub.provider(EngineKind::builtIn), built);
  EXPECT_EQ(hub.provider(EngineKind::apple), nullptr);
}

TEST(ProviderStatus, LabelsAndEquality) {
  EXPECT_EQ(ProviderStatus{}.label(), "Not checked yet");
  EXPECT_EQ((ProviderStatus{ProviderStatus::Case::checking, ""}.label()), "Checking…");
  EXPECT_EQ(ProviderStatus::good("Ready").label(), "Ready");
  EXPECT_NE(ProviderStatus::good("Ready"), ProviderStatus::problem("Ready"));
}

}  // namespace
}  // namespace nimbletype
