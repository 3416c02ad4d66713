#include "core/settings/preferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/storage/memory_defaults_store.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Stored = std::pair<std::string, DefaultsValue>;

DefaultsValue text(std::string s) {
  return s;
}
DefaultsValue whole(std::int64_t n) {
  return n;
}
DefaultsValue combo(std::string json) {
  return DataValue{std::move(json)};
}

const std::vector<Stored>& defaults() {
  static const std::vector<Stored> table{
      {"isEnabled", true},
      {"enabledByDefault", true},
      {"codeEditorsEnabled", false},
      {"completeInsideText", false},
      {"ignoreSmallFields", false},
      {"onDemandOnly", false},
      {"delayMilliseconds", 0.0},
      {"length", text("medium")},
      {"insertion", text("typing")},
      {"showMenuBarIcon", true},
      {"showWordCountInMenuBar", false},
      {"onboardingDone", false},
      {"introSeen", false},
      {"introMuted", false},
      {"remindHiddenIcon", true},
      {"quitRivalsAutomatically", false},
      {"ghostStyle", text("grey")},
      {"textScale", 1.0},
      {"verticalNudge", 0.0},
      {"showKeyHint", true},
      {"keyHintsShown", whole(0)},
      {"hideOnTypo", false},
      {"suggestFixes", true},
      {"engine", text("builtIn")},
      {"ollamaURL", text("http://localhost:11434")},
      {"ollamaModel", text("")},
      {"serverURL", text("http://localhost:1234/v1")},
      {"serverModel", text("")},
      {"creativity", 0.3},
      {"contextApp", true},
      {"contextWebsite", true},
      {"contextClipboard", false},
      {"contextScreen", true},
      {"contextNearbyWindows", false},
      {"contextRecent", true},
      {"customInstructions", text("")},
      {"memoryEnabled", false},
      {"memoryRecordAll", false},
      {"memoryStrength", 2.0},
      {"acceptWordKey", combo(R"({"keyCode":48,"modifiers":0})")},
      {"acceptAllKey", combo(R"({"keyCode":50,"modifiers":0})")},
      {"triggerKey", combo(R"({"keyCode":49,"modifiers":6})")},
      {"alternativesKey", combo(R"({"keyCode":125,"modifiers":2})")},
      {"toggleAppKey", combo("null")},
      {"toggleGlobalKey", combo("null")},
      {"escapeBehavior", text("dismiss")},
      {"trailingSpace", true},
      {"trailingPunctuation", true},
      {"emojiEnabled", true},
      {"emoticons", true},
      {"skinTone", whole(0)},
      {"includeNeutralTone", false},
      {"batteryOnDemand", false},
      {"batteryShorter", true},
      {"batteryModel", text("")},
  };
  return table;
}

std::vector<std::string> keysOf(const std::vector<Stored>& table) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : table) keys.push_back(key);
  return keys;
}

std::vector<Stored> stored(const Preferences& preferences) {
  std::vector<Stored> table;
  for (const auto* setting : preferences.settings()) table.emplace_back(setting->key(), setting->stored());
  return table;
}

TEST(Preferences, AnEmptyStoreYieldsTheDefaultsAndIsReadOnceInOrder) {
  MemoryDefaultsStore store;
  const Preferences preferences(store);
  EXPECT_THAT(stored(preferences), testing::ElementsAreArray(defaults()));
  EXPECT_THAT(store.readKeys, testing::ElementsAreArray(keysOf(defaults())));
  EXPECT_THAT(store.writtenKeys, IsEmpty());
}

// Another acceptable value for each default.
DefaultsValue changed(const std::string& key, const DefaultsValue& value) {
  if (const auto* flag = std::get_if<bool>(&value)) return !*flag;
  if (const auto* number = std::get_if<double>(&value)) return *number + 0.5;
  if (const auto* count = std::get_if<std::int64_t>(&value)) return *count + 3;
  if (std::holds_alternative<DataValue>(value)) return combo(R"({"keyCode":7,"modifiers":9})");
  if (key == "length") return text("long");
  if (key == "insertion") return text("paste");
  if (key == "ghostStyle") return text("tinted");
  if (key == "engine") return text("openAI");
  if (key == "escapeBehavior") return text("passThrough");
  return text("näher 👍");
}

TEST(Preferences, EverySettingSurvivesARestartInItsNativeForm) {
  MemoryDefaultsStore store;
  std::vector<Stored> expected;
  {
    const Preferences preferences(store);
    for (const auto& [key, value] : defaults()) {
      expected.emplace_back(key, changed(key, value));
      EXPECT_TRUE(preferences.find(key)->assign(expected.back().second)) << key;
      EXPECT_EQ(store.get(key), expected.back().second) << key;
    }
  }
  EXPECT_THAT(stored(Preferences(store)), testing::ElementsAreArray(expected));
}

TEST(Preferences, WhatDoesNotFitYieldsTheDefault) {
  const std::vector<Stored> table{
      {"isEnabled", whole(0)},
      {"isEnabled", text("false")},
      {"textScale", text("2")},
      {"textScale", true},
      {"creativity", std::numeric_limits<double>::quiet_NaN()},
      {"keyHintsShown", 4.0},
      {"keyHintsShown", whole(std::int64_t{1} << 40)},
      {"length", text("Long")},
      {"length", whole(2)},
      {"engine", text("")},
      {"ollamaModel", combo("llama")},
      {"acceptWordKey", text(R"({"keyCode":1,"modifiers":0})")},
      {"acceptWordKey", combo("")},
      {"acceptWordKey", combo("{")},
      {"acceptWordKey", combo("[]")},
      {"acceptWordKey", combo(R"({"keyCode":1})")},
      {"acceptWordKey", combo(R"({"keyCode":65536,"modifiers":0})")},
      {"acceptWordKey", combo(R"({"keyCode":-1,"modifiers":0})")},
      {"acceptWordKey", combo(R"({"keyCode":1,"modifiers":16})")},
      {"acceptWordKey", combo(R"({"keyCode":"1","modifiers":0})")},
  };
  for (const auto& [key, value] : table) {
    MemoryDefaultsStore store;
    store.set(key, value);
    EXPECT_THAT(stored(Preferences(store)), testing::ElementsAreArray(defaults())) << key;
  }
}

TEST(Preferences, ReadsWhatAHandWouldWrite) {
  MemoryDefaultsStore store;
  store.set("textScale", whole(2));
  store.set("acceptWordKey", combo(R"( { "modifiers": 8, "keyCode": 36, "note": "mine" } )"));
  store.set("triggerKey", combo("null"));
  const Preferences preferences(store);
  EXPECT_EQ(preferences.textScale.get(), 2.0);
  EXPECT_EQ(preferences.acceptWordKey.get(), (KeyCombo{36, {8}}));
  EXPECT_EQ(preferences.triggerKey.get(), std::nullopt);
}

TEST(Preferences, OnlyARealChangeIsStoredAndTold) {
  MemoryDefaultsStore store;
  Preferences preferences(store);
  std::vector<CompletionLength> told;
  int others = 0;
  const auto length = preferences.length.observe([&] { told.push_back(preferences.length.get()); });
  const auto scale = preferences.textScale.observe([&] { ++others; });
  preferences.length.set(CompletionLength::medium);
  EXPECT_THAT(store.writtenKeys, IsEmpty());
  preferences.length.set(CompletionLength::longLength);
  preferences.length.set(CompletionLength::longLength);
  EXPECT_THAT(store.writtenKeys, ElementsAre("length"));
  EXPECT_THAT(told, ElementsAre(CompletionLength::longLength));
  EXPECT_EQ(others, 0);
}

TEST(Preferences, AnObserverMaySetTheSettingAgain) {
  MemoryDefaultsStore store;
  Preferences preferences(store);
  const auto clamp = preferences.textScale.observe([&] {
    if (preferences.textScale.get() > 3) preferences.textScale.set(3);
  });
  std::vector<double> told;
  const auto listener = preferences.textScale.observe([&] { told.push_back(preferences.textScale.get()); });
  preferences.textScale.set(10);
  EXPECT_THAT(told, ElementsAre(3.0));
  EXPECT_EQ(store.get("textScale"), DefaultsValue(3.0));
}

TEST(PreferencesReset, KeepsWhatTheUserHasSeenAndTellsTheRest) {
  MemoryDefaultsStore store;
  Preferences preferences(store);
  for (const auto& [key, value] : defaults()) preferences.find(key)->assign(changed(key, value));
  store.set("migratedFromPlumlet", true);
  store.set("AppleLanguages", text("de"));
  store.set("leftover", true);
  int told = 0;
  std::vector<Task> tasks;
  for (const auto* setting : preferences.settings()) tasks.push_back(setting->observe([&] { ++told; }));

  preferences.reset();

  auto expected = defaults();
  const std::vector<std::string> surviving{"onboardingDone", "introSeen", "introMuted", "keyHintsShown"};
  for (auto& [key, value] : expected)
    if (std::ranges::find(surviving, key) != surviving.end()) value = changed(key, value);
  EXPECT_THAT(stored(preferences), testing::ElementsAreArray(expected));
  EXPECT_EQ(static_cast<std::size_t>(told), expected.size() - surviving.size());
  EXPECT_EQ(store.get("migratedFromPlumlet"), DefaultsValue(true));
  EXPECT_EQ(store.get("AppleLanguages"), text("de"));
  EXPECT_EQ(store.get("leftover"), std::nullopt);
  EXPECT_THAT(stored(Preferences(store)), testing::ElementsAreArray(expected));
}

}  // namespace
}  // namespace nimbletype
