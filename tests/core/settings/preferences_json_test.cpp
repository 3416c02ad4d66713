#include "core/settings/preferences_json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "core/settings/preferences.h"
#include "platform/scripted/storage/memory_defaults_store.h"

namespace nimbletype {
namespace {

using Json = nlohmann::ordered_json;

class PreferencesJson : public testing::Test {
 protected:
  std::string error(const std::string& key, const std::string& json) {
    const auto result = setFromJson(preferences, key, Json::parse(json));
    return result ? "" : result.error();
  }
  MemoryDefaultsStore store;
  Preferences preferences{store};
};

// What users have stored goes by these names, and what they never chose by these values.
TEST_F(PreferencesJson, HasEverySettingInItsOrder) {
  std::ifstream file("tests/core/settings/defaults.json");
  EXPECT_EQ(toJson(preferences).dump(), Json::parse(file).dump());
}

TEST_F(PreferencesJson, SetsEachTypeAndShowsItBack) {
  const std::vector<std::pair<std::string, std::string>> table{
      {"isEnabled", "false"},       {"delayMilliseconds", "250.5"},
      {"keyHintsShown", "3"},       {"length", "\"long\""},
      {"ollamaModel", "\"naïve\""}, {"acceptWordKey", R"({"keyCode":36,"modifiers":15})"},
      {"triggerKey", "null"},
  };
  for (const auto& [key, json] : table) {
    EXPECT_EQ(error(key, json), "");
    EXPECT_EQ(toJson(preferences)[key].dump(), json);
  }
  EXPECT_EQ(error("textScale", "2"), "");
  EXPECT_EQ(toJson(preferences)["textScale"].dump(), "2.0");
}

TEST_F(PreferencesJson, RefusesWhatDoesNotFitWithASentence) {
  const auto before = toJson(preferences);
  const std::vector<std::array<std::string, 3>> table{
      {"noSuchKey", "1", R"(There is no setting "noSuchKey".)"},
      {"isEnabled", "1", R"(The setting "isEnabled" must be true or false.)"},
      {"textScale", "\"1\"", R"(The setting "textScale" must be a number.)"},
      {"textScale", "null", R"(The setting "textScale" must be a number.)"},
      {"skinTone", "1.0", R"(The setting "skinTone" must be a whole number.)"},
      {"skinTone", "18446744073709551615", R"(The setting "skinTone" must be a whole number.)"},
      {"ollamaModel", "[]", R"(The setting "ollamaModel" must be a string.)"},
      {"length", "\"huge\"", R"(The setting "length" must be one of "short", "medium", "long".)"},
      {"acceptWordKey", "48", R"(The setting "acceptWordKey" must be {"keyCode":…,"modifiers":…} or null.)"},
      {"acceptWordKey", "{}", R"(The setting "acceptWordKey" must be {"keyCode":…,"modifiers":…} or null.)"},
  };
  for (const auto& [key, json, sentence] : table) EXPECT_EQ(error(key, json), sentence);
  EXPECT_EQ(toJson(preferences), before);
}

}  // namespace
}  // namespace nimbletype
