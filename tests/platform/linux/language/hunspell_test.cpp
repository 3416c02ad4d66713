#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/linux/language/hunspell_dictionary.h"
#include "platform/linux/language/hunspell_spell_checker.h"
#include "platform/linux/language/sure_correction.h"
#include "tests/platform/language/spell_checker_conformance.h"
#include "tools/stage/waiting_main_loop.h"

namespace nimbletype {
namespace {

TEST(HunspellDictionary, IsChosenByLanguage) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::path(testing::TempDir()) / "dictionaries";
  fs::create_directories(folder);
  for (const char* name : {"en_US", "de_CH", "de_AT", "fr_FR"})
    for (const char* ending : {".aff", ".dic"}) std::ofstream(folder / (name + std::string(ending))) << "";
  std::ofstream(folder / "it_IT.dic") << "";  // without its other half
  const struct {
    const char *language, *chosen;
  } cases[] = {{"fr_FR", "fr_FR"}, {"fr_CA", "fr_FR"}, {"de", "de_AT"},
               {"de_DE", "de_AT"}, {"it_IT", "en_US"}, {"", "en_US"}};
  for (const auto& c : cases) EXPECT_EQ(findDictionary(c.language, folder), folder / c.chosen) << c.language;
  EXPECT_EQ(findDictionary("de", folder / "none"), std::nullopt);
  fs::remove_all(folder);

  EXPECT_EQ(localeLanguage("de_AT.UTF-8"), "de_AT");
  EXPECT_EQ(localeLanguage("ca_ES@valencia"), "ca_ES");
  EXPECT_EQ(localeLanguage("C.UTF-8"), "");
}

TEST(HunspellDictionary, ConvertsToTheDictionarysEncoding) {
  namespace fs = std::filesystem;
  const fs::path base = fs::path(testing::TempDir()) / "latin";
  std::ofstream(base.string() + ".aff") << "SET ISO8859-1\nTRY eu\n";
  std::ofstream(base.string() + ".dic") << "2\nm\xFC"
                                           "de\nm\xFChe\n";
  const HunspellDictionary dictionary(base);
  EXPECT_FALSE(dictionary.isMisspelled("müde"));
  EXPECT_TRUE(dictionary.isMisspelled("mude"));
  EXPECT_EQ(dictionary.correction("müdde"), "müde");
  EXPECT_FALSE(dictionary.isMisspelled("слово"));
  for (const char* ending : {".aff", ".dic"}) fs::remove(base.string() + ending);
}

// It is loaded on a thread that tells nobody.
void awaitDictionary(const HunspellSpellChecker& checker) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!checker.isReady() && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
  ASSERT_TRUE(checker.isReady()) << "waited 10 s for the dictionary";
}

struct HunspellHarness {
  HunspellHarness() { awaitDictionary(hunspell); }
  SpellChecker& checker() { return hunspell; }
  void runUntil(const std::function<bool()>& done) { loop.runUntil(done); }
  WaitingMainLoop loop;
  HunspellSpellChecker hunspell{loop, "en_US"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Hunspell, SpellCheckerConformance, HunspellHarness);

TEST(HunspellSpellChecker, KnowsApostrophesAndQuotes) {
  HunspellHarness harness;
  EXPECT_TRUE(harness.hunspell.isMisspelled("'recieve"));
  harness.hunspell.correction("'recieve");
  harness.runUntil([&] { return !harness.hunspell.isLookingUp("'recieve"); });
  EXPECT_EQ(harness.hunspell.correction("'recieve"), "'receive");
  for (const char* word : {"receive", "doesn't", "doesn’t", "'quoted'"})
    EXPECT_FALSE(harness.hunspell.isMisspelled(word)) << word;
}

// A word is checked while it is being typed: what may go on is not to be corrected.
TEST(SureCorrection, OnlySlipsOfTheHand) {
  const struct {
    const char *word, *suggestion;
    bool sure;
  } cases[] = {{"recieve", "receive", true},       {"teh", "the", true},
               {"occured", "occurred", true},      {"untill", "until", false},
               {"comming", "coming", true},        {"doesnt", "doesn't", true},
               {"tomor", "tumor", false},          {"becaus", "because", false},
               {"differen", "different", false},   {"wher", "when", false},
               {"naiev", "naive", true},           {"übre", "über", true},
               {"definately", "definitely", false}};
  for (const auto& c : cases) EXPECT_EQ(isSureCorrection(c.word, c.suggestion), c.sure) << c.word;
}

TEST(HunspellSpellChecker, MayGoWhileItLooksSomethingUp) {
  WaitingMainLoop loop;
  {
    HunspellSpellChecker passing(loop, "en_US");
    awaitDictionary(passing);
    passing.correction("recieve");
  }
  loop.runPosted();
}

}  // namespace
}  // namespace nimbletype
