#include "core/settings/preferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

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

std::vector<Stored> stored(const Preferences& preferences) {
  std::vector<Stored> table;
  for (const auto* setting : preferences.settings()) table.emplace_back(setting->key(), setting->stored());
  return table;
}

const std::vector<Stored>& defaults() {
  static MemoryDefaultsStore empty;
  static const auto table = stored(Preferences(empty));
  return table;
}

TEST(Preferences, AreReadOnceInOrder) {
  MemoryDefaultsStore store;
  const Preferences preferences(store);
  std::vector<std::string> keys;
  for (const auto& [key, value] : stored(preferences)) keys.push_back(key);
  EXPECT_EQ(store.readKeys, keys);
  EXPECT_THAT(store.writtenKeys, IsEmpty());
}

// Another acceptable value for each default.
DefaultsValue changed(const std::string& key, const DefaultsValue& value) {
  if (const auto* flag = std::get_if<bool>(&value)) return !*flag;
  if (const auto* number = std::get_if<double>(&value)) return *number + 0.5;
  if (const auto* count = std::get_if<std::int64_t>(&value)) return *count + 3;
  if (std::holds_alternative<DataValue>(value)) return combo(R"({"keyCode":7,"modifiers":9})");
  const std::map<std::string, const char*> choices{{"length", "long"},
                                                   {"insertion", "paste"},
                                                   {"ghostStyle", "tinted"},
                                                   {"engine", "openAI"},
                                                   {"escapeBehavior", "passThrough"}};
  const auto choice = choices.find(key);
  return text(choice == choices.end() ? "näher 👍" : choice->second);
}

std::vector<Stored> changeAll(const Preferences& preferences) {
  std::vector<Stored> all;
  for (const auto& [key, value] : defaults()) {
    all.emplace_back(key, changed(key, value));
    EXPECT_TRUE(preferences.find(key)->assign(all.back().second)) << key;
  }
  return all;
}

TEST(Preferences, EverySettingSurvivesARestartInItsNativeForm) {
  MemoryDefaultsStore store;
  const auto expected = changeAll(Preferences(store));
  for (const auto& [key, value] : expected) EXPECT_EQ(store.get(key), value) << key;
  EXPECT_EQ(stored(Preferences(store)), expected);
}

TEST(Preferences, WhatDoesNotFitYieldsTheDefault) {
  const std::pair<std::string, std::vector<DefaultsValue>> table[] = {
      {"isEnabled", {whole(0), text("false")}},
      {"textScale", {text("2"), true}},
      {"creativity", {std::numeric_limits<double>::quiet_NaN()}},
      {"keyHintsShown", {4.0, whole(std::int64_t{1} << 40)}},
      {"length", {text("Long"), whole(2)}},
      {"engine", {text("")}},
      {"ollamaModel", {combo("llama")}},
      {"acceptWordKey",
       {text(R"({"keyCode":1,"modifiers":0})"), combo(""), combo("{"), combo("[]"), combo(R"({"keyCode":1})"),
        combo(R"({"keyCode":65536,"modifiers":0})"), combo(R"({"keyCode":-1,"modifiers":0})"),
        combo(R"({"keyCode":1,"modifiers":16})"), combo(R"({"keyCode":"1","modifiers":0})")}}};
  for (const auto& [key, values] : table)
    for (const auto& value : values) {
      MemoryDefaultsStore store;
      store.set(key, value);
      EXPECT_EQ(stored(Preferences(store)), defaults()) << key;
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
  const auto clamp = preferences.textScale.observe([&] {
    if (preferences.textScale.get() > 3) preferences.textScale.set(3);  // an observer may set it again
  });
  std::vector<double> told;
  const auto scale = preferences.textScale.observe([&] { told.push_back(preferences.textScale.get()); });
  int others = 0;
  const auto length = preferences.length.observe([&] { ++others; });
  preferences.textScale.set(1);
  EXPECT_THAT(store.writtenKeys, IsEmpty());
  for (int i = 0; i < 2; ++i) preferences.textScale.set(2);
  EXPECT_THAT(store.writtenKeys, ElementsAre("textScale"));
  preferences.textScale.set(10);
  EXPECT_THAT(told, ElementsAre(2.0, 3.0));
  EXPECT_EQ(store.get("textScale"), DefaultsValue(3.0));
  EXPECT_EQ(others, 0);
}

TEST(PreferencesReset, KeepsWhatTheUserHasSeenAndTellsTheRest) {
  MemoryDefaultsStore store;
  Preferences preferences(store);
  changeAll(preferences);
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
  EXPECT_EQ(stored(preferences), expected);
  EXPECT_EQ(static_cast<std::size_t>(told), expected.size() - surviving.size());
  EXPECT_EQ(store.get("migratedFromPlumlet"), DefaultsValue(true));
  EXPECT_EQ(store.get("AppleLanguages"), text("de"));
  EXPECT_EQ(store.get("leftover"), std::nullopt);
  EXPECT_EQ(stored(Preferences(store)), expected);
}

}  // namespace
}  // namespace nimbletype
