#pragma once
#include <string>
#include <string_view>

#include "core/settings/setting.h"
#include "core/settings/settings_types.h"

namespace nimbletype {

// Not a setting of the user's: whether the earlier product's things were carried over.
inline constexpr std::string_view migratedKey = "migratedFromPlumlet";

// The one store of the user's settings. Each is read once, when this is made; every change is stored at once
// and told to those who observe that setting. Main thread only.
class Preferences : private SettingsTable {
 public:
  explicit Preferences(DefaultsStore& store) : SettingsTable(store) {}

  // The setting stored under this key; none when there is no such setting.
  AnySetting* find(std::string_view key) const;
  // All settings, in the order below.
  using SettingsTable::settings;
  // Back to the defaults, except for what the user has been shown already and the language of the
  // application.
  void reset();

  // The names in quotes are what is stored; the order is the order of reading.
  Setting<bool> isEnabled{*this, "isEnabled", true};
  Setting<bool> enabledByDefault{*this, "enabledByDefault", true};
  Setting<bool> codeEditorsEnabled{*this, "codeEditorsEnabled", false};
  Setting<bool> completeInsideText{*this, "completeInsideText", false};
  Setting<bool> ignoreSmallFields{*this, "ignoreSmallFields", false};
  Setting<bool> onDemandOnly{*this, "onDemandOnly", false};
  Setting<double> delayMilliseconds{*this, "delayMilliseconds", 0};
  Setting<CompletionLength> length{*this, "length", CompletionLength::medium};
  Setting<InsertionMethod> insertion{*this, "insertion", InsertionMethod::typing};
  Setting<bool> showMenuBarIcon{*this, "showMenuBarIcon", true};
  Setting<bool> showWordCountInMenuBar{*this, "showWordCountInMenuBar", false};
  Setting<bool> onboardingDone{*this, "onboardingDone", false};
  Setting<bool> introSeen{*this, "introSeen", false};
  Setting<bool> introMuted{*this, "introMuted", false};
  Setting<bool> remindHiddenIcon{*this, "remindHiddenIcon", true};
  Setting<bool> quitRivalsAutomatically{*this, "quitRivalsAutomatically", false};
  Setting<GhostStyle> ghostStyle{*this, "ghostStyle", GhostStyle::grey};
  Setting<double> textScale{*this, "textScale", 1.0};
  Setting<double> verticalNudge{*this, "verticalNudge", 0};
  Setting<bool> showKeyHint{*this, "showKeyHint", true};
  Setting<int> keyHintsShown{*this, "keyHintsShown", 0};
  Setting<bool> hideOnTypo{*this, "hideOnTypo", false};
  Setting<bool> suggestFixes{*this, "suggestFixes", true};
  Setting<EngineKind> engine{*this, "engine", EngineKind::builtIn};
  Setting<std::string> ollamaURL{*this, "ollamaURL", "http://localhost:11434"};
  Setting<std::string> ollamaModel{*this, "ollamaModel", ""};
  Setting<std::string> serverURL{*this, "serverURL", "http://localhost:1234/v1"};
  Setting<std::string> serverModel{*this, "serverModel", ""};
  Setting<double> creativity{*this, "creativity", 0.3};
  Setting<bool> contextApp{*this, "contextApp", true};
  Setting<bool> contextWebsite{*this, "contextWebsite", true};
  Setting<bool> contextClipboard{*this, "contextClipboard", false};
  Setting<bool> contextScreen{*this, "contextScreen", true};
  Setting<bool> contextNearbyWindows{*this, "contextNearbyWindows", false};
  Setting<bool> contextRecent{*this, "contextRecent", true};
  Setting<std::string> customInstructions{*this, "customInstructions", ""};
  Setting<bool> memoryEnabled{*this, "memoryEnabled", false};
  Setting<bool> memoryRecordAll{*this, "memoryRecordAll", false};
  Setting<double> memoryStrength{*this, "memoryStrength", 2.0};
  Setting<OptionalKeyCombo> acceptWordKey{*this, "acceptWordKey", KeyCombo{key::tab, {}}};
  Setting<OptionalKeyCombo> acceptAllKey{*this, "acceptAllKey", KeyCombo{key::aboveTab, {}}};
  Setting<OptionalKeyCombo> triggerKey{*this, "triggerKey",
                                       KeyCombo{key::space, {ModifierSet::control | ModifierSet::option}}};
  Setting<OptionalKeyCombo> alternativesKey{*this, "alternativesKey",
                                            KeyCombo{key::downArrow, {ModifierSet::option}}};
  Setting<OptionalKeyCombo> toggleAppKey{*this, "toggleAppKey", std::nullopt};
  Setting<OptionalKeyCombo> toggleGlobalKey{*this, "toggleGlobalKey", std::nullopt};
  Setting<EscapeBehavior> escapeBehavior{*this, "escapeBehavior", EscapeBehavior::dismiss};
  Setting<bool> trailingSpace{*this, "trailingSpace", true};
  Setting<bool> trailingPunctuation{*this, "trailingPunctuation", true};
  Setting<bool> emojiEnabled{*this, "emojiEnabled", true};
  Setting<bool> emoticons{*this, "emoticons", true};
  Setting<int> skinTone{*this, "skinTone", 0};
  Setting<bool> includeNeutralTone{*this, "includeNeutralTone", false};
  Setting<bool> batteryOnDemand{*this, "batteryOnDemand", false};
  Setting<bool> batteryShorter{*this, "batteryShorter", true};
  Setting<std::string> batteryModel{*this, "batteryModel", ""};
};

}  // namespace nimbletype
