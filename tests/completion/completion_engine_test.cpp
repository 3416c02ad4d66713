#include "core/completion/completion_engine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/scripted/memory_defaults_store.h"
#include "platform/scripted/memory_file_store.h"
#include "platform/scripted/recording_log.h"
#include "platform/scripted/scripted_power.h"
#include "platform/scripted/scripted_screens.h"
#include "platform/scripted/scripted_secure_input.h"
#include "platform/scripted/scripted_spell_checker.h"
#include "platform/scripted/virtual_main_loop.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

class HeldProvider : public CompletionProvider {
 public:
  EngineKind kind() const override { return EngineKind::builtIn; }
  PromptStyle promptStyle() const override { return PromptStyle::raw; }
  bool streams() const override { return true; }
  Task complete(const CompletionRequest& request, PartialHandler partial, ResultHandler done) override {
    requests.push_back(request);
    grow = std::move(partial);
    answer = std::move(done);
    return Task([this] { answer = nullptr, grow = nullptr; });
  }
  void warmUp(const std::string&) override { ++warmUps; }
  Task status(StatusHandler) override { return {}; }
  std::vector<CompletionRequest> requests;
  PartialHandler grow;
  ResultHandler answer;
  int warmUps = 0;
};

class EngineTest : public testing::Test {
 protected:
  EngineTest() {
    field.shown.fieldKey = "app:1";
    field.shown.bundleID = "app";
    field.shown.role = "AXTextArea";
    field.shown.caretRect = TopLeftRect{10, 20, 1, 16};
    engine.setSource(field);
  }
  static std::vector<std::unique_ptr<CompletionProvider>> providers(HeldProvider*& provider) {
    auto made = std::make_unique<HeldProvider>();
    provider = made.get();
    std::vector<std::unique_ptr<CompletionProvider>> all;
    all.push_back(std::move(made));
    return all;
  }
  void suggest(const std::string& before, const std::string& text) {
    field.change(before);
    loop.advance(Milliseconds(0));
    ASSERT_TRUE(provider->answer);
    provider->answer(Completion{text, {}});
  }
  void ask(const std::string& before) {
    field.change(before);
    loop.advance(Milliseconds(0));
    ASSERT_TRUE(provider->grow);
  }
  void grow(const std::string& textSoFar) {
    ASSERT_TRUE(provider->grow) << "the request was cancelled";
    provider->grow(textSoFar);
    loop.advance(Milliseconds(16));
  }
  std::string ghostText() const { return ghost.shown ? ghost.shown->text : "(none)"; }

  VirtualMainLoop loop;
  MemoryDefaultsStore defaults;
  MemoryFileStore rulesFile;
  RecordingLog log;
  ScriptedPower power;
  ScriptedScreens screens;
  ScriptedSecureInput secureInput;
  ScriptedSpellChecker spelling;
  SlowField field;
  CountingContext context;
  Ghost ghost;
  HeldProvider* provider = nullptr;
  Preferences prefs{defaults};
  AppRules rules{prefs, rulesFile, loop, log};
  ProviderHub hub{providers(provider)};
  TypoChecker typo{spelling};
  CompletionEngine engine{{loop, prefs, rules, hub, context, typo, ghost, screens, secureInput, power, log}};
};

TEST_F(EngineTest, FastPressesNeverTakeAWordTwice) {
  suggest("This", " is how it");
  EXPECT_TRUE(engine.acceptNext());
  EXPECT_TRUE(engine.acceptNext());
  field.change("This i");  // the first word arrives letter by letter
  EXPECT_EQ(ghostText(), "s how it");
  EXPECT_TRUE(engine.acceptNext());
  EXPECT_TRUE(engine.acceptNext()) << "nothing is left, but the key is not the application's";
  EXPECT_THAT(field.inserted, ElementsAre(" is ", "how ", "it"));
  field.change("This is how it");
  EXPECT_EQ(ghostText(), "(none)");
  EXPECT_FALSE(engine.acceptNext());
}

TEST_F(EngineTest, AnInsertionThatNeverArrivedCanBeTakenAgain) {
  suggest("This", " is how");
  engine.acceptNext();
  loop.advance(Milliseconds(1000));
  field.change("This ");
  engine.acceptNext();
  EXPECT_THAT(field.inserted, ElementsAre(" is ", "is "));
}

TEST_F(EngineTest, KeysAreTakeableOnlyWhileSomethingIsShown) {
  EXPECT_THAT(engine.takeableKeys(), IsEmpty());
  int changes = 0;
  engine.onShownChanged([&] { ++changes; });
  suggest("This", " is");
  EXPECT_EQ(engine.takeableKeys().size(), 3U);
  engine.pointerPressed();
  EXPECT_THAT(engine.takeableKeys(), IsEmpty());
  EXPECT_EQ(changes, 2);
}

TEST_F(EngineTest, AChangeReportedTwiceIsOneChange) {
  field.change("Hello");
  loop.advance(Milliseconds(0));
  field.change("Hello");
  loop.advance(Milliseconds(0));
  EXPECT_EQ(provider->requests.size(), 1U);
  EXPECT_TRUE(provider->answer) << "the request still runs";
}

TEST_F(EngineTest, ContextIsGatheredOncePerVisitAndPause) {
  for (const char* text : {"Hel", "Hell", "Hello"}) {
    field.change(text);
    loop.advance(Milliseconds(200));
  }
  EXPECT_EQ(context.gathered, 1);
  loop.advance(ContextCache::pause);
  field.change("Hello,");
  loop.advance(Milliseconds(0));
  EXPECT_EQ(context.gathered, 2);
  field.shown.fieldKey = "app:2";
  field.change("Other");
  loop.advance(Milliseconds(0));
  EXPECT_EQ(context.gathered, 3);
}

TEST_F(EngineTest, ALateAnswerForAMovedCaretIsDrawnAtTheCaret) {
  field.change("Hello");
  loop.advance(Milliseconds(0));
  field.shown.caretRect = TopLeftRect{10, 40, 1, 16};
  field.change("Hello");
  loop.advance(Milliseconds(0));
  provider->answer(Completion{" you", {}});
  ASSERT_TRUE(ghost.shown);
  EXPECT_EQ(ghost.shown->caretRect.y, 900 - 40 - 16);
}

TEST_F(EngineTest, TheFieldIsReadAgainUntilItAnswersAfterTakingAll) {
  suggest("This", " is");
  field.readable = false;
  EXPECT_TRUE(engine.acceptAll());
  loop.advance(Milliseconds(54));
  field.readable = true;
  field.shown.before = "This is";
  loop.advance(Milliseconds(1));
  EXPECT_EQ(engine.snapshot()->before, "This is");
  loop.advance(Milliseconds(1000));
  EXPECT_EQ(provider->requests.size(), 1U);
}

TEST_F(EngineTest, AFixReplacesExactlyTheWord) {
  spelling.words["recieve"] = "receive";
  field.change("I recieve");
  ASSERT_TRUE(ghost.shown);
  EXPECT_EQ(ghost.shown->kind, GhostContent::Kind::correction);
  EXPECT_EQ(ghostText(), "receive");
  EXPECT_TRUE(engine.keyPressed({key::tab, {}, "\t", false}));
  EXPECT_EQ(field.deleted, 7);
  EXPECT_THAT(field.inserted, ElementsAre("receive"));
  EXPECT_EQ(ghostText(), "(none)");
}

TEST_F(EngineTest, AMisspelledWordHoldsTheSuggestionBack) {
  prefs.suggestFixes.set(false);
  prefs.hideOnTypo.set(true);
  spelling.words["mispeled"] = std::nullopt;
  field.change("a mispeled");
  EXPECT_EQ(engine.status(), Status::blocked("This word looks misspelled"));
  EXPECT_EQ(log.lines.back().message, "held: the word being typed looks misspelled (8 letters)");
  engine.suggestNow();
  loop.advance(Milliseconds(0));
  EXPECT_EQ(provider->requests.size(), 1U);
}

TEST_F(EngineTest, TypingOneMoreCharacterOnlyAppendsToTheRawPrompt) {
  std::string text;
  for (int i = 0; i < 400; ++i) text += "some words ";
  std::string last;
  int anew = 0;
  for (std::size_t end = 2900; end < 3600; ++end) {
    field.change(text.substr(end - std::min<std::size_t>(end, 3000), std::min<std::size_t>(end, 3000)));
    loop.advance(Milliseconds(0));
    const std::string& prompt = provider->requests.back().rawPrompt;
    if (!prompt.starts_with(last)) ++anew;
    last = prompt;
  }
  EXPECT_LE(anew, 3);
}

// --- suggestions that grow while they are written ---

TEST_F(EngineTest, WholeWordsAppearWhileTheEngineWrites) {
  ask("This");
  grow(" is h");
  EXPECT_EQ(ghostText(), " is");
  EXPECT_EQ(engine.status().state, Status::Case::showing);
  EXPECT_TRUE(engine.streaming());
  grow(" is how i");
  EXPECT_EQ(ghostText(), " is how");
  provider->answer(Completion{" is how it", {}});
  EXPECT_EQ(ghostText(), " is how it");
  EXPECT_EQ(engine.lastSuggestion(), " is how it");
}

TEST_F(EngineTest, AQuickAnswerIsDrawnOnce) {
  ask("This");
  provider->grow(" is how");
  loop.advance(Milliseconds(15));
  EXPECT_EQ(ghostText(), "(none)");
  provider->answer(Completion{" is how it", {}});
  loop.advance(Milliseconds(1000));
  EXPECT_EQ(ghostText(), " is how it");
}

TEST_F(EngineTest, TypingOverAGrowingSuggestionLetsItGrowOn) {
  ask("This");
  grow(" is how i");
  field.change("This is");
  EXPECT_EQ(ghostText(), " how");
  EXPECT_TRUE(engine.acceptNext());
  field.change("This is how");
  EXPECT_EQ(ghostText(), "(none)");
  EXPECT_THAT(engine.takeableKeys(), IsEmpty()) << "nothing is on screen";
  EXPECT_FALSE(engine.acceptNext());
  EXPECT_FALSE(engine.acceptAll());
  EXPECT_EQ(engine.status().state, Status::Case::thinking);
  grow(" is how it goe");
  EXPECT_EQ(ghostText(), " it");
  provider->answer(Completion{" is how it goes", {}});
  EXPECT_EQ(ghostText(), " it goes");
  EXPECT_EQ(provider->requests.size(), 1U);
}

TEST_F(EngineTest, AGrowingSuggestionThatIsContradictedEnds) {
  struct Case {
    const char* name;
    std::function<void()> happens;
  };
  const Case cases[] = {
      {"typed another way", [&] { field.change("This x"); }},
      {"dismissed", [&] { EXPECT_TRUE(engine.escape()); }},
      {"all taken", [&] { EXPECT_TRUE(engine.acceptAll()); }},
      {"no field", [&] { engine.fieldLost("gone"); }},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    loop.advance(Milliseconds(1000));
    field.change("");
    ask("This");
    grow(" is h");
    each.happens();
    EXPECT_EQ(ghostText(), "(none)");
    EXPECT_FALSE(provider->grow) << "the engine still writes for nobody";
  }
}

TEST_F(EngineTest, TheWholeTextMayOnlyChangeWhatNobodyHasTaken) {
  ask("This");
  grow(" \"is h");
  provider->answer(Completion{" is how", {}});
  EXPECT_EQ(ghostText(), " is how");

  ask("That");
  grow(" was it w");
  field.change("That was");
  provider->answer(Completion{" is how", {}});
  EXPECT_EQ(ghostText(), " it") << "what was typed over stays valid";
}

TEST_F(EngineTest, AFailureHalfWayLeavesWhatIsWritten) {
  ask("This");
  grow(" is how i");
  provider->answer(std::unexpected(ProviderError{"The model stopped with error 1"}));
  EXPECT_EQ(ghostText(), " is how");
  EXPECT_EQ(engine.status().state, Status::Case::showing);

  ask("That");
  grow(" was how i");
  field.change("That was how");
  loop.advance(Milliseconds(8000));
  EXPECT_EQ(provider->requests.size(), 3U) << "typed out, so the next one is asked for";
}

TEST_F(EngineTest, EnginesAreWarmedUpWhenTheyAreChosenAndAfterALongRest) {
  engine.warmUp();
  EXPECT_EQ(provider->warmUps, 1);
  prefs.ollamaModel.set("ll");
  prefs.ollamaModel.set("llama3");
  loop.advance(Milliseconds(1000));
  EXPECT_EQ(provider->warmUps, 2) << "once for all letters of a name";
  ask("This");
  field.shown.fieldKey = "app:2";
  field.change("That");
  EXPECT_EQ(provider->warmUps, 2);
  loop.advance(WarmUp::kept + Milliseconds(1000));
  field.shown.fieldKey = "app:1";
  field.change("This");
  EXPECT_EQ(provider->warmUps, 3);
}

}  // namespace
}  // namespace nimbletype
