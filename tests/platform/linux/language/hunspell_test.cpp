#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "platform/linux/language/hunspell_dictionary.h"
#include "platform/linux/language/hunspell_spell_checker.h"
#include "platform/linux/language/sure_correction.h"
#include "platform/qt/system/qt_main_loop.h"

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

struct HunspellSpellCheckerTest : testing::Test {
  void waitFor(const char* what, const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "waited 10 s for " << what;
      const auto wake = loop.after(Milliseconds(2), [] {});
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
  }
  int count = 1;
  char name[5] = "test";
  char* arguments[2] = {name, nullptr};
  QCoreApplication application{count, arguments};
  QtMainLoop loop;
};

TEST_F(HunspellSpellCheckerTest, ChecksInPlaceAndCorrectsLater) {
  HunspellSpellChecker checker(loop, "en_US");
  waitFor("the dictionary", [&] { return checker.isReady(); });
  int found = 0;
  checker.onFound([&] { ++found; });
  const struct {
    const char *word, *correction;
  } misspelled[] = {{"recieve", "receive"}, {"'recieve", "'receive"}, {"doesnt", "doesn't"}};
  for (const auto& c : misspelled) {
    EXPECT_TRUE(checker.isMisspelled(c.word)) << c.word;
    EXPECT_EQ(checker.correction(c.word), std::nullopt);
    EXPECT_TRUE(checker.isLookingUp(c.word));
    waitFor("a correction", [&] { return !checker.isLookingUp(c.word); });
    EXPECT_EQ(checker.correction(c.word), c.correction);
  }
  EXPECT_EQ(found, 3);
  for (const char* word : {"receive", "doesn't", "doesn’t", "'quoted'"})
    EXPECT_FALSE(checker.isMisspelled(word)) << word;
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

TEST_F(HunspellSpellCheckerTest, MayGoWhileItLooksSomethingUp) {
  auto checker = std::make_unique<HunspellSpellChecker>(loop, "en_US");
  waitFor("the dictionary", [&] { return checker->isReady(); });
  checker->correction("recieve");
  checker.reset();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace nimbletype
