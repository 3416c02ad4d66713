#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <fstream>

#include "platform/linux/language/hunspell_dictionary.h"
#include "platform/linux/language/hunspell_spell_checker.h"
#include "platform/linux/language/sure_correction.h"
#include "platform/qt/system/qt_main_loop.h"
#include "tests/platform/language/spell_checker_conformance.h"
#include "tools/stage/temporary_folder.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

TEST(HunspellDictionary, IsChosenByLanguage) {
  const TemporaryFolder folder;
  for (const char* name : {"en_US.aff", "en_US.dic", "de_CH.aff", "de_CH.dic", "de_AT.aff", "de_AT.dic",
                           "fr_FR.aff", "fr_FR.dic", "it_IT.dic"})  // Italian without its other half
    std::ofstream(folder.path / name) << "";
  const std::pair<const char*, const char*> cases[] = {{"fr_FR", "fr_FR"}, {"fr_CA", "fr_FR"},
                                                       {"de", "de_AT"},    {"de_DE", "de_AT"},
                                                       {"it_IT", "en_US"}, {"", "en_US"}};
  for (const auto& [language, chosen] : cases)
    EXPECT_EQ(findDictionary(language, folder.path), folder.path / chosen) << language;
  EXPECT_EQ(findDictionary("de", folder.path / "none"), std::nullopt);

  EXPECT_EQ(localeLanguage("de_AT.UTF-8"), "de_AT");
  EXPECT_EQ(localeLanguage("ca_ES@valencia"), "ca_ES");
  EXPECT_EQ(localeLanguage("C.UTF-8"), "");
}

TEST(HunspellDictionary, ConvertsToTheDictionarysEncoding) {
  const TemporaryFolder folder;
  std::ofstream(folder.path / "latin.aff") << "SET ISO8859-1\nTRY eu\n";
  std::ofstream(folder.path / "latin.dic") << "2\nm\xFC"
                                              "de\nm\xFChe\n";
  const HunspellDictionary dictionary(folder.path / "latin");
  EXPECT_FALSE(dictionary.isMisspelled("müde"));
  EXPECT_TRUE(dictionary.isMisspelled("mude"));
  EXPECT_EQ(dictionary.correction("müdde"), "müde");
  EXPECT_FALSE(dictionary.isMisspelled("слово"));
}

struct HunspellHarness {
  // It is loaded on a thread that tells nobody.
  HunspellHarness() {
    waitFor("the dictionary", [this] { return hunspell.isReady(); });
  }
  SpellChecker& checker() { return hunspell; }
  void runUntil(const std::function<bool()>& done) { waitFor("a correction", done); }
  int noArguments = 0;
  QCoreApplication application{noArguments, nullptr};
  QtMainLoop loop;
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
  int noArguments = 0;
  const QCoreApplication application{noArguments, nullptr};
  QtMainLoop loop;
  auto checker = std::make_unique<HunspellSpellChecker>(loop, "en_US");
  waitFor("the dictionary", [&] { return checker->isReady(); });
  checker->correction("recieve");
  checker.reset();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace nimbletype
