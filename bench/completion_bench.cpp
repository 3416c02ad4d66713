#include <benchmark/benchmark.h>

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
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/scripted_power_source.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "text/text.h"

// What our own code costs on the way from a key press to a request, and from a typed-over letter to a new
// ghost.
namespace nimbletype {
namespace {

class NoLog : public SystemLog {
  void log(std::string_view, std::string_view) override {}
};
class NoGhost : public GhostPresenter {
  void present(const GhostContent& content) override { benchmark::DoNotOptimize(&content); }
  void hide() override {}
};
class FullContext : public ContextSource {
  PromptContext gather(const FieldSnapshot& snapshot) override {
    PromptContext context;
    context.appName = snapshot.appName;
    context.windowTitle = "Re: budget";
    context.now = "Friday 7 March 2025";
    context.screenText = std::string(2000, 's');
    return context;
  }
};
class Catcher : public CompletionProvider {
 public:
  EngineKind kind() const override { return EngineKind::builtIn; }
  PromptStyle promptStyle() const override { return PromptStyle::raw; }
  Task complete(const CompletionRequest& request, PartialHandler, ResultHandler done) override {
    benchmark::DoNotOptimize(&request);
    answer = std::move(done);
    return {};
  }
  Task status(StatusHandler) override { return {}; }
  ResultHandler answer;
};

struct Desk {
  static std::vector<std::unique_ptr<CompletionProvider>> one(Catcher*& catcher) {
    std::vector<std::unique_ptr<CompletionProvider>> providers;
    auto made = std::make_unique<Catcher>();
    catcher = made.get();
    providers.push_back(std::move(made));
    return providers;
  }
  VirtualMainLoop loop;
  MemoryDefaultsStore defaults;
  MemoryFileStore file, statsFile, memoryFile;
  MemorySecretStore secrets{loop};
  ScriptedBackgroundWork background{loop};
  ScriptedRegionSource region;
  NoLog log;
  NoGhost ghost;
  FullContext context;
  ScriptedPowerSource powerSource;
  ScriptedScreens screens;
  FixedFontMetrics metrics;
  RecordingOverlaySurface surface, emojiSurface;
  AlternativesPanel alternatives{{surface, screens, metrics}, loop};
  ScriptedSecureInput secureInput;
  ScriptedSpellChecker spelling;
  EmojiIndex emoji;
  EmojiPickerPanel emojiPicker{{emojiSurface, screens, metrics}};
  Catcher* catcher = nullptr;
  Preferences prefs{defaults};
  AppRules rules{prefs, file, loop, log};
  ProviderHub hub{one(catcher)};
  TypoChecker typo{spelling};
  PowerMonitor power{powerSource, loop};
  StatsStore stats{statsFile, loop, log, region};
  WritingMemory memory{{memoryFile, secrets, background, loop, log}};
  Observable<std::string> rival;
  CompletionEngine engine{{loop, prefs, rules, hub, context, typo, ghost, alternatives, emoji, emojiPicker,
                           screens, metrics, secureInput, power, stats, memory, rival, log}};
};

FieldSnapshot snapshotOf(std::string before) {
  FieldSnapshot snapshot;
  snapshot.fieldKey = "app:1";
  snapshot.bundleID = "app";
  snapshot.appName = "Mail";
  snapshot.role = "AXTextArea";
  snapshot.before = std::move(before);
  snapshot.caretRect = TopLeftRect{10, 20, 1, 16};
  snapshot.fieldFrame = TopLeftRect{0, 0, 600, 200};
  return snapshot;
}

std::string prose(std::string_view piece, std::size_t characters) {
  std::string text;
  while (text.size() < characters * 2) text += piece;
  return std::string(text::lastCharacters(text, characters));
}

void snapshotToRequest(benchmark::State& state, std::string_view piece) {
  Desk desk;
  const FieldSnapshot a = snapshotOf(prose(piece, 2999) + "a"), b = snapshotOf(prose(piece, 2999) + "b");
  bool first = true;
  for (auto unused : state) {
    desk.engine.fieldChanged((first = !first) ? a : b);
    desk.loop.advance(Milliseconds(0));
  }
}

void typedOverCharacter(benchmark::State& state, std::string_view piece) {
  Desk desk;
  const std::string before = prose(piece, 2900);
  const std::string suggestion = " and this is what the suggestion says about the matter in some more words";
  desk.engine.fieldChanged(snapshotOf(before));
  desk.loop.advance(Milliseconds(0));
  desk.catcher->answer(Completion{suggestion, {}});
  const FieldSnapshot a = snapshotOf(before + suggestion.substr(0, 10)),
                      b = snapshotOf(before + suggestion.substr(0, 11));
  bool first = true;
  for (auto unused : state) desk.engine.fieldChanged((first = !first) ? a : b);
}

BENCHMARK_CAPTURE(snapshotToRequest, ascii, "plain words and more, ")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(snapshotToRequest, accents, "mots entassés à côté, ")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(snapshotToRequest, emoji, "日本語👍🏽 と、")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typedOverCharacter, ascii, "plain words and more, ")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(typedOverCharacter, emoji, "日本語👍🏽 と、")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace nimbletype

BENCHMARK_MAIN();
