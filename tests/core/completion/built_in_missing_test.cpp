#include "engines/apple/apple_provider.h"
#include "engines/builtin/builtin_provider.h"
#include "platform/scripted/on_device/scripted_on_device_model.h"
#include "tests/core/completion/engine_world.h"

// What the built-in engine tells, and who writes for it, at every stage of its model's download.
namespace nimbletype {
namespace {

using Phase = ModelPhase::Case;
using Availability = OnDeviceModel::Availability;

constexpr Availability availabilities[] = {Availability::available, Availability::deviceNotEligible,
                                           Availability::notEnabled, Availability::modelNotReady,
                                           Availability::unavailable};

struct ScriptedLocator : ModelLocator {
  ModelPhase now;
  std::optional<std::string> installedModel() override {
    if (now.state != Phase::installed) return std::nullopt;
    return "models/starter/starter-q8_0.gguf";
  }
  ModelPhase phase() const override { return now; }
};

struct DownloadWorld {
  Providers makeProviders(EngineWorld& made) {
    apple = std::make_unique<ScriptedOnDeviceModel>(made.loop);
    auto standIn = std::make_unique<AppleIntelligenceProvider>(*apple, made.loop);
    Providers all;
    all.push_back(std::make_unique<BuiltInProvider>(made.loop, locator, made.log, standIn.get()));
    all.push_back(std::move(standIn));
    return all;
  }
  ProviderStatus status() {
    ProviderStatus result;
    const Task task = world.hub.provider(EngineKind::builtIn)->status([&](auto each) { result = each; });
    world.loop.advance(Milliseconds(0));
    return result;
  }

  ScriptedLocator locator;
  std::unique_ptr<ScriptedOnDeviceModel> apple;
  EngineWorld world{[this](EngineWorld& each) { return makeProviders(each); }};
};

TEST(BuiltInModelMissing, AppleFillsInWhereItCan) {
  const ProviderStatus downloading =
      ProviderStatus::good("Downloading. Apple Intelligence fills in until it's done.");
  const ProviderStatus checking = ProviderStatus::good("Checking the download.");
  const ProviderStatus fillsIn = ProviderStatus::good("Apple Intelligence fills in until you download it.");
  const ProviderStatus nobody = ProviderStatus::problem("Download the model to start");
  const struct {
    const char* name;
    Phase phase;
    ProviderStatus withApple, without;
  } table[] = {{"not downloaded", Phase::notDownloaded, fillsIn, nobody},
               {"downloading", Phase::downloading, downloading, downloading},
               {"checking", Phase::checking, checking, checking},
               {"failed", Phase::failed, fillsIn, nobody}};
  for (const auto& row : table) {
    for (const Availability availability : availabilities) {
      SCOPED_TRACE(std::string(row.name) + ", availability " +
                   std::to_string(static_cast<int>(availability)));
      DownloadWorld desk;
      desk.locator.now.state = row.phase;
      desk.apple->state = availability;
      const bool usable = availability == Availability::available;
      EXPECT_EQ(desk.status(), usable ? row.withApple : row.without);
      desk.apple->willSay("everyone.");
      desk.world.field.change("Hello ");
      desk.world.loop.advance(Milliseconds(100));
      EXPECT_EQ(desk.world.ghostText(), usable ? "everyone." : "(none)");
      EXPECT_EQ(desk.world.engine.status().get(),
                usable ? (Status{Status::Case::showing, {}})
                       : Status::failed("Download the Nimbletype model in Settings first"));
      EXPECT_EQ(desk.apple->requests.size(), usable ? 1U : 0U);
    }
  }
}

TEST(BuiltInModelMissing, AnInstalledModelNeedsNobody) {
  for (const Availability availability : availabilities) {
    DownloadWorld desk;
    desk.locator.now.state = Phase::installed;
    desk.apple->state = availability;
    EXPECT_EQ(desk.status(), ProviderStatus::good("Downloaded"));
    desk.world.field.change("Hello ");
    desk.world.loop.advance(Milliseconds(0));
    EXPECT_EQ(desk.world.engine.status().get().state, Status::Case::thinking);
    EXPECT_TRUE(desk.apple->requests.empty());
  }
}

TEST(BuiltInModelMissing, ADownloadThatEndsTakesOverFromApple) {
  DownloadWorld desk;
  desk.locator.now.state = Phase::downloading;
  desk.world.field.change("Hello ");
  desk.world.loop.advance(Milliseconds(0));
  EXPECT_EQ(desk.apple->requests.size(), 1U);
  desk.locator.now.state = Phase::installed;
  desk.world.field.change("Hello t");
  desk.world.loop.advance(Milliseconds(0));
  EXPECT_EQ(desk.apple->requests.size(), 1U);
  EXPECT_EQ(desk.apple->cancelled(), 1);
}

TEST(BuiltInModelMissing, OtherEnginesAreNeverReplaced) {
  DownloadWorld desk;
  desk.world.prefs.engine.set(EngineKind::ollama);
  desk.world.field.change("Hello ");
  desk.world.loop.advance(Milliseconds(0));
  EXPECT_TRUE(desk.apple->requests.empty());
}

}  // namespace
}  // namespace nimbletype
