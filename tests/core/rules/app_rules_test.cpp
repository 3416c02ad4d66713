#include "core/rules/app_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "core/settings/preferences.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::IsEmpty;

class AppRulesTest : public testing::Test {
 protected:
  std::string reason(const std::optional<std::string>& domain = std::nullopt) const {
    return rules->decision("a", "A", domain).reason;
  }
  void restart() {
    rules.reset();
    rules.emplace(preferences, file, loop, log);
  }

  MemoryDefaultsStore defaults;
  Preferences preferences{defaults};
  MemoryFileStore file;
  VirtualMainLoop loop;
  RecordingSystemLog log;
  std::optional<AppRules> rules{std::in_place, preferences, file, loop, log};
};

TEST_F(AppRulesTest, SavesASecondAfterTheLastChangeAndLosesNothing) {
  rules->setRule("app:a", {.mode = RuleMode::off});
  loop.advance(999ms);
  rules->setRule("app:b", {.mode = RuleMode::on});
  loop.advance(999ms);
  EXPECT_EQ(file.writes, 0);
  loop.advance(1min);
  EXPECT_EQ(file.writes, 1);
  file.failsToWrite = true;
  rules->setRule("app:c", {.mode = RuleMode::off});
  loop.advance(2s);
  EXPECT_EQ(log.lines.size(), 1U);
  file.failsToWrite = false;
  rules->pause("app:b", 1h);
  for (int start = 0; start < 2; ++start) restart();
  EXPECT_EQ(file.writes, 2) << "on quitting, and only when something is unsaved";
  EXPECT_EQ(rules->rule("app:c").mode, RuleMode::off);
  EXPECT_TRUE(rules->isPaused("app:b"));
}

TEST_F(AppRulesTest, FollowsTheGeneralSettings) {
  EXPECT_TRUE(rules->decision("a", "A", std::nullopt).enabled);
  preferences.enabledByDefault.set(false);
  preferences.length.set(CompletionLength::longLength);
  preferences.insertion.set(InsertionMethod::paste);
  preferences.memoryEnabled.set(true);
  const RuleDecision expected{
      false, "Off unless turned on per app", true, InsertionMethod::paste, CompletionLength::longLength,
      true};
  EXPECT_EQ(rules->decision("a", "A", std::nullopt), expected);
  preferences.codeEditorsEnabled.set(true);
  preferences.enabledByDefault.set(true);
  EXPECT_TRUE(rules->decision("dev.zed.Zed", "Zed", std::nullopt).enabled);
}

TEST_F(AppRulesTest, APauseEndsByItselfOrWhenToggled) {
  for (const bool waits : {true, false}) {
    rules->togglePause("app:a", "A");
    loop.advance(15min - 1ms);
    EXPECT_EQ(reason(), "Paused in A");
    waits ? loop.advance(1ms) : rules->togglePause("app:a", "A");
    EXPECT_EQ(reason(), "");
    EXPECT_FALSE(rules->isPaused("app:a"));
  }
}

TEST_F(AppRulesTest, PausesEverywhereForAWhileOrUntilResumed) {
  rules->pauseEverywhere(1h);
  loop.advance(1h);
  EXPECT_FALSE(rules->isPausedEverywhere());
  rules->togglePauseEverywhere();
  restart();
  loop.setWallNow(loop.wallNow() + 24h * 365 * 50);
  EXPECT_EQ(reason(), "Paused everywhere");
  rules->togglePauseEverywhere();
  EXPECT_EQ(reason(), "");
  rules->pauseEverywhere(std::chrono::seconds::max());
  EXPECT_EQ(rules->state().globalPauseUntil, untilResumed);
  rules->pauseEverywhere(std::chrono::seconds::min());
  EXPECT_FALSE(rules->isPausedEverywhere());
}

TEST_F(AppRulesTest, ForgetsEndedPausesWhenItStarts) {
  rules->pause("app:a", 10s);
  rules->pause("app:b", 1h);
  rules->pauseEverywhere(10s);
  loop.advance(10s);
  restart();
  EXPECT_THAT(rules->state().pauses, testing::ElementsAre(testing::Key("app:b")));
  EXPECT_EQ(rules->state().globalPauseUntil, std::nullopt);
}

TEST_F(AppRulesTest, ANameStaysWhileItIsUsed) {
  rules->setRule("web:example.com", {.mode = RuleMode::off});
  rules->setName("web:example.com", "Example");
  rules->pause("web:example.com", 1h);
  rules->removeRule("web:example.com");
  EXPECT_EQ(reason("example.com"), "Paused on Example");
  rules->resume("web:example.com");
  EXPECT_THAT(rules->state().names, IsEmpty());
}

TEST_F(AppRulesTest, TellsOnlyRealChangesAndClearsEverything) {
  int told = 0;
  const auto observer = rules->observe([&] { ++told; });
  rules->removeRule("app:a");
  rules->resume("app:a");
  rules->resumeEverywhere();
  rules->clear();
  EXPECT_EQ(told, 0);
  for (int i = 0; i < 2; ++i) rules->setRule("app:a", {.mode = RuleMode::off});
  EXPECT_EQ(told, 1);
  rules->setName("app:a", "A");
  rules->pause("app:a", 1h);
  rules->pauseEverywhere();
  rules->clear();
  EXPECT_EQ(told, 5);
  EXPECT_EQ(rules->state(), RulesState());
  loop.advance(1s);
  EXPECT_EQ(nlohmann::ordered_json::parse(*file.content), rules->json());
  EXPECT_EQ(rules->json().dump(), R"({"rules":{},"pauses":{},"names":{}})");
}

}  // namespace
}  // namespace nimbletype
