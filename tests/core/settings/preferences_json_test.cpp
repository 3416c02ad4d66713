#include "core/settings/preferences_json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
  EXPECT_EQ(
      toJson(preferences).dump(),
      R"({"isEnabled":true,"enabledByDefault":true,"codeEditorsEnabled":false,"completeInsideText":false,)"
      R"("ignoreSmallFields":false,"onDemandOnly":false,"delayMilliseconds":0.0,"length":"medium",)"
      R"("insertion":"typing","showMenuBarIcon":true,"showWordCountInMenuBar":false,"onboardingDone":false,)"
      R"("introSeen":false,"introMuted":false,"remindHiddenIcon":true,"quitRivalsAutomatically":false,)"
      R"("ghostStyle":"grey","textScale":1.0,"verticalNudge":0.0,"showKeyHint":true,"keyHintsShown":0,)"
      R"("hideOnTypo":false,"suggestFixes":true,"engine":"builtIn","ollamaURL":"http://localhost:11434",)"
      R"("ollamaModel":"","serverURL":"http://localhost:1234/v1","serverModel":"","creativity":0.3,)"
      R"("contextApp":true,"contextWebsite":true,"contextClipboard":false,"contextScreen":true,)"
      R"("contextNearbyWindows":false,"contextRecent":true,"customInstructions":"","memoryEnabled":false,)"
      R"("memoryRecordAll":false,"memoryStrength":2.0,"acceptWordKey":{"keyCode":48,"modifiers":0},)"
      R"("acceptAllKey":{"keyCode":50,"modifiers":0},"triggerKey":{"keyCode":49,"modifiers":6},)"
      R"("alternativesKey":{"keyCode":125,"modifiers":2},"toggleAppKey":null,"toggleGlobalKey":null,)"
      R"("escapeBehavior":"dismiss","trailingSpace":true,"trailingPunctuation":true,"emojiEnabled":true,)"
      R"("emoticons":true,"skinTone":0,"includeNeutralTone":false,"batteryOnDemand":false,)"
      R"("batteryShorter":true,"batteryModel":""})");
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
