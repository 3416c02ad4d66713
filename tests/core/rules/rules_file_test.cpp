#include "core/rules/rules_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/system/recording_system_log.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;
using Json = nlohmann::ordered_json;

const WallTime morning = std::chrono::sys_days{std::chrono::March / 7 / 2025} + 9h;

class RulesFileTest : public testing::Test {
 protected:
  RulesState load(const std::string& content) {
    store.content = content;
    return file.load();
  }
  MemoryFileStore store;
  RecordingSystemLog log;
  RulesFile file{store, log};
};

TEST_F(RulesFileTest, HoldsTheFourMapsAndReadsThemBack) {
  const RulesState state{
      .rules = {{"app:a", {.mode = RuleMode::off}},
                {"web:example.com",
                 {RuleMode::inherit, false, InsertionMethod::paste, CompletionLength::shortLength, true}}},
      .pauses = {{"app:a", morning}},
      .globalPauseUntil = untilResumed,
      .names = {{"web:example.com", "Exämple"}},
  };
  ASSERT_TRUE(file.save(state));
  EXPECT_EQ(Json::parse(*store.content).dump(),
            R"({"rules":{"app:a":{"mode":"off"},"web:example.com":{"mode":"inherit","tabAccepts":false,)"
            R"("insertion":"paste","length":"short","recordWriting":true}},)"
            R"("pauses":{"app:a":"2025-03-07T09:00:00Z"},"globalPauseUntil":"9999-12-31T23:59:59Z",)"
            R"("names":{"web:example.com":"Exämple"}})");
  RulesFile again(store, log);
  EXPECT_EQ(again.load(), state);
  EXPECT_EQ(file.json({}).dump(), R"({"rules":{},"pauses":{},"names":{}})");
}

TEST_F(RulesFileTest, DropsBadPartsAndKeepsTheRest) {
  const auto state = load(R"({
    "rules": {
      "app:good": {"mode": "on", "length": "enormous", "tabAccepts": "no", "insertion": 3},
      "app:unknown": {"mode": "sometimes", "recordWriting": false},
      "app:list": [], "app:": {"mode": "off"}, "other": {"mode": "off"}
    },
    "pauses": {"app:iso": "2025-03-07T10:00:00+01:00", "app:seconds": 1741338000.9, "app:bad": "tomorrow",
               "app:negative": -5, "app:far": 1e300, "app:flag": true},
    "globalPauseUntil": {},
    "names": {"app:good": "Good", "app:bad": 7}
  })");
  const RulesState expected{
      .rules = {{"app:good", {.mode = RuleMode::on}}, {"app:unknown", {.recordWriting = false}}},
      .pauses = {{"app:iso", morning}, {"app:seconds", morning}, {"app:far", untilResumed}},
      .names = {{"app:good", "Good"}},
  };
  EXPECT_EQ(state, expected);
}

TEST_F(RulesFileTest, SurvivesEveryShapeOfNonsense) {
  for (const auto* content : {"", "nonsense", "[]", "3", "{\"rules\": "}) {
    SCOPED_TRACE(content);
    EXPECT_EQ(load(content), RulesState());
    EXPECT_EQ(store.asides.back(), content);
    EXPECT_EQ(log.lines.back().category, "rules");
  }
  store.asides.clear();
  EXPECT_EQ(load(R"({"rules": 1, "pauses": [1], "names": "x", "globalPauseUntil": null})"), RulesState());
  EXPECT_TRUE(store.asides.empty());
}

TEST_F(RulesFileTest, KeepsKeysItDoesNotKnow) {
  auto state = load(R"({"version": 2, "rules": {"app:a": {"mode": "on", "color": "red", "tabAccepts": true},
                       "app:b": {"color": "blue"}}})");
  state.rules["app:a"] = {.mode = RuleMode::off};
  state.rules.erase("app:b");
  EXPECT_EQ(file.json(state).dump(),
            R"({"version":2,"rules":{"app:a":{"mode":"off","color":"red"}},"pauses":{},"names":{}})");
}

}  // namespace
}  // namespace nimbletype
