#include "tests/core/completion/engine_world.h"

namespace nimbletype {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

struct HoldsProvider {
  HeldProvider* provider = nullptr;
};

class EngineTest : public testing::Test, protected HoldsProvider, protected EngineWorld {
 protected:
  EngineTest() : EngineWorld([this](EngineWorld&) { return makeProviders(); }) {}
  Providers makeProviders() {
    Providers all;
    all.push_back(std::make_unique<HeldProvider>());
    provider = static_cast<HeldProvider*>(all.front().get());
    return all;
  }
  void suggest(const std::string& before, const std::string& text) {
    ask(before);
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
};

// The letters of an insertion arrive one by one, each before the caret has passed it.
TEST_F(EngineTest, ACaretThatLagsBehindAnInsertionKeepsTheRest) {
  suggest("This", " is how it works");
  EXPECT_TRUE(engine.acceptNext());
  field.shown.after = "s ";
  field.change("This i");
  EXPECT_EQ(ghostText(), "s how it works");
  field.shown.after = "";
  field.change("This is ");
  EXPECT_EQ(ghostText(), "how it works");
  field.shown.after = "of ours";  // no part of it
  field.change("This is");
  EXPECT_EQ(ghostText(), "(none)");
}

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

TEST_F(EngineTest, TheKeycapNamesAKeyThatTakesTheSuggestionUntilItIsKnown) {
  struct Case {
    OptionalKeyCombo word, all;
    std::string label;  // empty: no keycap
  };
  const KeyCombo tab{key::tab, {}}, above{key::aboveTab, {}};
  const Case cases[] = {{tab, above, "Tab"}, {std::nullopt, above, "`"}, {std::nullopt, std::nullopt, ""}};
  for (const Case& c : cases) {
    prefs.acceptWordKey.set(c.word);
    prefs.acceptAllKey.set(c.all);
    suggest("Text for " + c.label, " you");
    ASSERT_TRUE(ghost.shown) << c.label;
    EXPECT_EQ(ghost.shown->hint ? ghost.shown->hintLabel : "", c.label);
  }
  EXPECT_EQ(prefs.keyHintsShown.get(), 2) << "one was not shown";
  prefs.acceptWordKey.set(tab);
  prefs.keyHintsShown.set(5);
  suggest("Later", " on");
  EXPECT_FALSE(ghost.shown->hint);
}

TEST_F(EngineTest, AnInsertionThatNeverArrivedCanBeTakenAgain) {
  suggest("This", " is how");
  engine.acceptNext();
  loop.advance(Milliseconds(1000));
  field.change("This ");
  engine.acceptNext();
  EXPECT_THAT(field.inserted, ElementsAre(" is ", "is "));
}

TEST_F(EngineTest, ASuggestionThatGrowsAndIsDrawnAgainCountsOnce) {
  ask("This");
  loop.advance(Milliseconds(84));
  grow(" is how");
  grow(" is how it");
  field.change("This i");
  loop.advance(Milliseconds(500));
  provider->answer(Completion{" is how it goes", {}});
  engine.acceptAll();
  loop.advance(Milliseconds(1000));
  suggest("This is how it goes.", "   ");
  const DayStats day = stats.today();
  EXPECT_THAT(std::vector({day.shown, day.accepts, day.words, day.characters}), ElementsAre(1, 1, 4, 13));
  EXPECT_THAT(stats.latencies(), ElementsAre(100)) << "until there was something to read";
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
  EXPECT_EQ(engine.snapshot().get()->before, "This is");
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
  EXPECT_EQ(engine.status().get(), Status::blocked("This word looks misspelled"));
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
  EXPECT_EQ(engine.status().get().state, Status::Case::showing);
  EXPECT_TRUE(engine.streaming());
  grow(" is how i");
  EXPECT_EQ(ghostText(), " is how");
  provider->answer(Completion{" is how it", {}});
  EXPECT_EQ(ghostText(), " is how it");
  EXPECT_EQ(engine.lastSuggestion().get(), " is how it");
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
  int changes = 0;
  engine.onShownChanged([&] { ++changes; });
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
  EXPECT_EQ(engine.status().get().state, Status::Case::thinking);
  field.change("This is ho");
  EXPECT_EQ(ghostText(), "w");
  EXPECT_EQ(changes, 3) << "its keys are to be taken again";
  field.change("This is how");
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
  EXPECT_EQ(engine.status().get().state, Status::Case::showing);

  ask("That");
  grow(" was how i");
  field.change("That was how");
  loop.advance(Milliseconds(8000));
  EXPECT_EQ(provider->requests.size(), 3U) << "typed out, so the next one is asked for";
}

// The gates hold for the request that would follow as for any other.
TEST_F(EngineTest, ATypedOutSuggestionMakesRoomForTheNextWhereItMayBeAskedFor) {
  prefs.onDemandOnly.set(true);
  field.change("This");
  engine.suggestNow();
  loop.advance(Milliseconds(0));
  grow(" is h");
  field.change("This is");
  provider->answer(Completion{" is", {}});
  EXPECT_EQ(engine.status().get(), Status::blocked("Press ⌃⌥Space for a suggestion"));
  prefs.onDemandOnly.set(false);
  prefs.hideOnTypo.set(true);
  spelling.words["mispeled"] = std::nullopt;
  ask("That is mis");
  grow("peled s");
  field.change("That is mispeled");
  provider->answer(Completion{"peled", {}});
  EXPECT_EQ(engine.status().get(), Status::blocked("This word looks misspelled"));
}

// Two words taken before the field shows the first are one insertion.
TEST_F(EngineTest, AnInsertionThatArrivesBitByBitAsksForNothing) {
  suggest("This", " is how");
  engine.acceptNext();
  engine.acceptNext();
  for (const char* before : {"This i", "This is ", "This is h", "This is how"}) {
    loop.advance(Milliseconds(80));
    field.change(before);
  }
  loop.advance(Milliseconds(1000));
  EXPECT_EQ(provider->requests.size(), 1U);
  field.change("This is ho");
  field.change("This is how");
  loop.advance(Milliseconds(0));
  EXPECT_EQ(provider->requests.size(), 2U) << "written by the user now";
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
