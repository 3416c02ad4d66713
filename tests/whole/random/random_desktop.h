#pragma once
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "core/app/key_router.h"
#include "input/insertion/text_injector.h"
#include "input/source/ax_field_source.h"
#include "platform/scripted/accessibility/scripted_accessibility.h"
#include "platform/scripted/desktop/scripted_workspace.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/keys/recording_event_poster.h"
#include "platform/scripted/keys/scripted_event_tap.h"
#include "platform/scripted/pasteboard/scripted_pasteboard.h"
#include "tests/core/completion/engine_world.h"

namespace nimbletype {

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}
  std::int64_t upTo(std::int64_t most) {
    return std::uniform_int_distribution<std::int64_t>(0, most)(engine_);
  }
  bool oneIn(std::int64_t n) { return upTo(n - 1) == 0; }
  template <typename Container>
  const auto& pick(const Container& from) {
    return *std::next(std::begin(from), upTo(static_cast<std::int64_t>(std::size(from)) - 1));
  }

 private:
  std::mt19937_64 engine_;
};

// Applications whose fields lie, fail and vanish at random, and a user who does anything at any time. The
// reader, the engine and the keys between them are real.
class RandomDesktop : public EngineWorld {
 public:
  explicit RandomDesktop(std::uint64_t seed);

  // Something happens; each broken promise is a failure of the test that runs.
  void step();
  // How often a suggestion was on screen, and how often one was inserted: a run without any proves nothing.
  int shown = 0, inserted = 0, snapshots = 0;

  static constexpr const char* secret = "SECRET";

 private:
  static Providers makeProviders(RandomDesktop& desktop);
  friend class RandomProvider;

  struct App {
    RunningApp app;
    std::vector<ObjectRef> elements;
  };
  ObjectRef makeElement();
  void misbehave(ScriptedElement& element);
  AttributeValue lie(const AttributeRead& read);
  TopLeftRect randomRect();
  std::u16string randomText();

  bool isAlive(const ObjectRef& element) const { return element && !vanished_.contains(element->hash()); }
  ObjectRef focused();
  void edit();
  void moveFocus();
  void pressKey();
  void deliver();
  void vanish();
  void upset();
  void expectNothingSecretWasRead();

  Dice dice_;
  ScriptedAccessibility ax_{loop};
  ScriptedWorkspace workspace_;
  FixedFontMetrics fonts_;
  RecordingEventPoster poster_;
  ScriptedPasteboard pasteboard_{loop};
  ScriptedEventTap eventTap_;
  TextInjector injector_{{poster_, ax_, pasteboard_, loop, log}};
  AXFieldSource source_{{ax_, workspace_, secureInput, loop, log, fonts_}, injector_};
  KeyTap tap_{eventTap_, log};
  KeyRouter router_{tap_, engine, prefs};
  std::vector<App> apps_;
  std::map<std::int64_t, ObjectRef> focus_;  // by process
  std::set<std::uint64_t> vanished_, secure_;
};

}  // namespace nimbletype
