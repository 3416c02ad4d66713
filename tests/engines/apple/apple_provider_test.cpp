#include "engines/apple/apple_provider.h"

#include "platform/scripted/on_device/scripted_on_device_model.h"
#include "tests/engines/servers/provider_fixture.h"

namespace nimbletype {
namespace {

using Availability = OnDeviceModel::Availability;

class AppleProviderTest : public ProviderFixture {
 protected:
  ScriptedOnDeviceModel model{loop};
  AppleIntelligenceProvider apple{model, loop};
};

TEST_F(AppleProviderTest, SendsInstructionsAndPromptSeparately) {
  model.willSay(" I hope");
  EXPECT_EQ(complete(apple, request())->text, " I hope");
  ASSERT_EQ(model.requests.size(), 1U);
  EXPECT_EQ(model.requests[0].instructions, "You are the autocomplete");
  EXPECT_EQ(model.requests[0].prompt, "Text typed so far");
  EXPECT_EQ(model.requests[0].temperature, 0.3);
  EXPECT_EQ(model.requests[0].maxTokens, 24);
  EXPECT_EQ(apple.promptStyle(), PromptStyle::instruct);
  apple.warmUp("You are");
  EXPECT_EQ(model.prewarmed, std::vector<std::string>{"You are"});
}

TEST_F(AppleProviderTest, ARefusalIsAnEmptyContinuationAndAnythingElseAnError) {
  model.willRefuse();
  EXPECT_EQ(complete(apple, request())->text, "");
  model.willFail("The context is too long. ");
  EXPECT_EQ(complete(apple, request()).error().message, "The context is too long.");
  model.willFail("");
  EXPECT_EQ(complete(apple, request()).error().message, "Apple Intelligence couldn't continue this text");
  model.state = Availability::notEnabled;
  model.willFail("");
  EXPECT_EQ(complete(apple, request()).error().message, "Turn on Apple Intelligence in System Settings");
}

TEST_F(AppleProviderTest, StatusTellsTheModelsAvailability) {
  const std::pair<Availability, ProviderStatus> cases[] = {
      {Availability::available, ProviderStatus::good("Ready")},
      {Availability::deviceNotEligible, ProviderStatus::problem("This Mac can't run Apple Intelligence")},
      {Availability::notEnabled, ProviderStatus::problem("Turn on Apple Intelligence in System Settings")},
      {Availability::modelNotReady, ProviderStatus::problem("The model is still downloading")},
      {Availability::unavailable, ProviderStatus::problem("Apple Intelligence is unavailable")},
  };
  for (const auto& [availability, expected] : cases) {
    model.state = availability;
    EXPECT_EQ(status(apple), expected);
    EXPECT_EQ(apple.isReady(), availability == Availability::available);
  }
}

}  // namespace
}  // namespace nimbletype
