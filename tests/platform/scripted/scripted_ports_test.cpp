#include "platform/scripted/desktop/recording_status_bar.h"
#include "platform/scripted/desktop/scripted_running_apps.h"
#include "platform/scripted/keys/recording_event_poster.h"
#include "platform/scripted/keys/scripted_event_tap.h"
#include "platform/scripted/language/scripted_spell_checker.h"
#include "platform/scripted/pasteboard/scripted_pasteboard.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/scripted_login_item.h"
#include "platform/scripted/system/scripted_permission_source.h"
#include "platform/scripted/system/scripted_power_source.h"
#include "platform/scripted/system/scripted_system_settings.h"
#include "tests/platform/desktop/running_apps_conformance.h"
#include "tests/platform/desktop/status_bar_conformance.h"
#include "tests/platform/keys/event_poster_conformance.h"
#include "tests/platform/keys/event_tap_conformance.h"
#include "tests/platform/language/spell_checker_conformance.h"
#include "tests/platform/pasteboard/pasteboard_conformance.h"
#include "tests/platform/scripted/virtual_time.h"
#include "tests/platform/storage/defaults_store_conformance.h"
#include "tests/platform/storage/file_store_conformance.h"
#include "tests/platform/storage/secret_store_conformance.h"
#include "tests/platform/system/background_work_conformance.h"
#include "tests/platform/system/login_item_conformance.h"
#include "tests/platform/system/main_loop_conformance.h"
#include "tests/platform/system/permission_source_conformance.h"
#include "tests/platform/system/power_source_conformance.h"
#include "tests/platform/system/system_settings_conformance.h"

namespace nimbletype {
namespace {

struct VirtualLoopHarness : VirtualTime {
  MainLoop& mainLoop() { return loop; }
};

struct MemoryDefaultsHarness {
  DefaultsStore& store() { return memory; }
  void reopen() {}
  MemoryDefaultsStore memory;
};

struct MemoryFileHarness {
  FileStore& file() { return memory; }
  void reopen() {}
  MemoryFileStore memory;
};

struct MemorySecretHarness : VirtualTime {
  SecretStore& store() { return memory; }
  void reopen() {}
  void lock() { memory.locked = true; }
  void vanish() { memory.available = false; }
  MemorySecretStore memory{loop};
};

struct ScriptedWorkHarness : VirtualTime {
  BackgroundWork& work() { return scripted; }
  ScriptedBackgroundWork scripted{loop};
};

struct ScriptedPowerHarness : VirtualTime {
  PowerSource& power() { return scripted; }
  void setBattery(bool on) { scripted.setBattery(on); }
  ScriptedPowerSource scripted;
};

struct ScriptedPermissionsHarness {
  PermissionSource& permissions() { return scripted; }
  ScriptedPermissionSource scripted;
};

struct ScriptedSettingsHarness {
  ScriptedSettingsHarness() { scripted.predictions = true; }
  SystemSettings& settings() { return scripted; }
  ScriptedSystemSettings scripted;
};

struct ScriptedLoginHarness {
  LoginItem& item() { return scripted; }
  void refuse() { scripted.refusal = "not now"; }
  ScriptedLoginItem scripted;
};

struct RecordingBarHarness {
  StatusBar& bar() { return recording; }
  void click() { recording.click(); }
  void waitFor(const std::string& what, const std::function<bool()>& condition) {
    EXPECT_TRUE(condition()) << what;
  }
  RecordingStatusBar recording;
};

class ScriptedApps : public conformance::RunningAppsWorld {
 public:
  RunningApps& apps() override { return scripted_; }
  std::int64_t launch(const std::string& name, bool refusesToQuit) override {
    if (refusesToQuit)
      scripted_.stubborn.insert(++last_);
    else
      ++last_;
    scripted_.launch({.processID = last_, .bundleID = "org.example." + name, .appName = name});
    return last_;
  }
  void waitFor(const std::string& what, const std::function<bool()>& condition) override {
    EXPECT_TRUE(condition()) << what;
  }

 private:
  ScriptedRunningApps scripted_;
  std::int64_t last_ = 0;
};

struct ScriptedPasteboardHarness : VirtualTime {
  using Formats = ScriptedPasteboard::Item;
  Pasteboard& pasteboard() { return scripted; }
  std::string textFormat() { return ScriptedPasteboard::textFormat; }
  std::string passingMark() { return ScriptedPasteboard::passingMark; }
  void copy(const Formats& formats) {
    scripted.copy(formats.empty() ? ScriptedPasteboard::Items{} : ScriptedPasteboard::Items{formats});
  }
  Formats paste() { return scripted.read().empty() ? Formats{} : scripted.read().front(); }
  void hang(bool hangs) { scripted.ownerTakes = Milliseconds(hangs ? 10'000 : 0); }
  ScriptedPasteboard scripted{loop};
};

struct ScriptedTapHarness {
  EventTap& tap() { return scripted; }
  Combos press(const Combos& keys) {
    Combos received;
    for (const KeyCombo& combo : keys)
      if (!scripted.press({combo.keyCode, combo.modifiers, {}, false})) received.push_back(combo);
    return received;
  }
  void pointer() { scripted.pointer(); }
  void postOwn(const KeyCombo& combo) { scripted.ownPress({combo.keyCode, combo.modifiers, {}, false}); }
  void settle(const Combos&, const Combos&) {}
  ScriptedEventTap scripted;
};

struct ScriptedSpellCheckerHarness {
  ScriptedSpellCheckerHarness() {
    scripted.words = {{"recieve", "receive"}, {"doesnt", "doesn't"}, {"xqzvkjw", std::nullopt}};
  }
  SpellChecker& checker() { return scripted; }
  void runUntil(const std::function<bool()>& done) { EXPECT_TRUE(done()); }
  ScriptedSpellChecker scripted;
};

struct RecordingPosterHarness {
  EventPoster& poster() { return recording; }
  EventPoster& sourceless() {
    recording.hasSource = false;
    return recording;
  }
  std::string text() { return recording.text(); }
  std::vector<KeyCombo> keys() {
    std::vector<KeyCombo> keys;
    for (const auto& posted : std::exchange(recording.posted, {})) keys.push_back(std::get<KeyCombo>(posted));
    return keys;
  }
  void hold(ModifierSet) {}
  RecordingEventPoster recording;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Virtual, MainLoopConformance, VirtualLoopHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, DefaultsStoreConformance, MemoryDefaultsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, FileStoreConformance, MemoryFileHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, SecretStoreConformance, MemorySecretHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, BackgroundWorkConformance, ScriptedWorkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, PowerSourceConformance, ScriptedPowerHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, PermissionSourceConformance, ScriptedPermissionsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, SystemSettingsConformance, ScriptedSettingsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, LoginItemConformance, ScriptedLoginHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Recording, StatusBarConformance, RecordingBarHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, PasteboardConformance, ScriptedPasteboardHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, EventTapConformance, ScriptedTapHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, SpellCheckerConformance, ScriptedSpellCheckerHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Recording, EventPosterConformance, RecordingPosterHarness);

}  // namespace

namespace conformance {
INSTANTIATE_TEST_SUITE_P(Scripted, RunningAppsConformance,
                         testing::Values(&makeRunningAppsWorld<ScriptedApps>));
}  // namespace conformance
}  // namespace nimbletype
