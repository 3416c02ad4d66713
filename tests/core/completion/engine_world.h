#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/app/setting_effects.h"
#include "core/completion/completion_engine.h"
#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/drawing/recording_overlay_surface.h"
#include "platform/scripted/keys/scripted_secure_input.h"
#include "platform/scripted/language/scripted_region_source.h"
#include "platform/scripted/language/scripted_spell_checker.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/scripted_power_source.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {

// A field that shows insertions only when the test says so, as real applications do.
class SlowField : public FieldSource {
 public:
  std::optional<FieldSnapshot> snapshot() override { return readable ? std::optional(shown) : std::nullopt; }
  std::optional<std::string> whyNoField() const override { return "gone"; }
  void onChange(std::function<void(Change)> changed) override { changed_ = std::move(changed); }
  void insert(const std::string& text, InsertionMethod) override { inserted.push_back(text); }
  void deleteBackwards(int count) override { deleted += count; }
  void change(const std::string& before) {
    shown.before = before;
    changed_(Change::value);
  }

  FieldSnapshot shown;
  bool readable = true;
  std::vector<std::string> inserted;
  int deleted = 0;

 private:
  std::function<void(Change)> changed_;
};

class CountingContext : public ContextSource {
 public:
  PromptContext gather(const FieldSnapshot&) override {
    ++gathered;
    return {};
  }
  int gathered = 0;
};

class Ghost : public GhostPresenter {
 public:
  void present(const GhostContent& content) override { shown = content; }
  void hide() override { shown.reset(); }
  std::optional<GhostContent> shown;
};

using Providers = std::vector<std::unique_ptr<CompletionProvider>>;

// The engine on a desktop of stand-ins, with a text area that has the focus.
struct EngineWorld {
  explicit EngineWorld(const std::function<Providers(EngineWorld&)>& make) : hub(make(*this)) {
    field.shown.fieldKey = "app:1";
    field.shown.bundleID = "app";
    field.shown.role = "AXTextArea";
    field.shown.caretRect = TopLeftRect{10, 20, 1, 16};
    engine.setSource(field);
  }
  std::string ghostText() const { return ghost.shown ? ghost.shown->text : "(none)"; }

  VirtualMainLoop loop;
  MemoryDefaultsStore defaults;
  MemoryFileStore rulesFile, statsFile, memoryFile;
  MemorySecretStore secrets{loop};
  ScriptedBackgroundWork background{loop};
  ScriptedRegionSource region;
  RecordingSystemLog log;
  ScriptedPowerSource powerSource;
  ScriptedScreens screens;
  ScriptedSecureInput secureInput;
  ScriptedSpellChecker spelling;
  SlowField field;
  CountingContext context;
  Ghost ghost;
  RecordingOverlaySurface alternativesSurface, emojiSurface;
  FixedFontMetrics metrics;
  AlternativesPanel alternatives{{alternativesSurface, screens, metrics}, loop};
  EmojiIndex emoji;
  EmojiPickerPanel emojiPicker{{emojiSurface, screens, metrics}};
  Preferences prefs{defaults};
  AppRules rules{prefs, rulesFile, loop, log};
  ProviderHub hub;
  TypoChecker typo{spelling};
  PowerMonitor power{powerSource, loop};
  StatsStore stats{statsFile, loop, log, region};
  WritingMemory memory{{memoryFile, secrets, background, loop, log}};
  Observable<std::string> rival;
  std::vector<Task> following = follow(prefs, {.engineChosen = [this] { engine.engineChosen(); }});
  CompletionEngine engine{{loop, prefs, rules, hub, context, typo, ghost, alternatives, emoji, emojiPicker,
                           screens, metrics, secureInput, power, stats, memory, rival, log}};
};

}  // namespace nimbletype
