#include "input/monitors/typo_checker.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

// Knows a few misspelled words and counts how often it is asked for a correction.
struct CountingChecker : SpellChecker {
  bool isMisspelled(std::string_view word) override { return words.contains(word); }
  std::optional<std::string> correction(std::string_view word) override {
    ++asked;
    return pending ? std::nullopt : words.find(word)->second;
  }
  bool isLookingUp(std::string_view) const override { return pending; }
  void onFound(const std::function<void()>& call) override { found = call; }

  std::map<std::string, std::optional<std::string>, std::less<>> words;
  std::function<void()> found;
  bool pending = false;
  int asked = 0;
};

struct TypoCheckerTest : testing::Test {
  TypoCheckerTest() {
    for (const char* word :
         {"teh", "helo", "recieve", "Helo", "hELO", "nimbl", "nimbletyp", "dont'", "don’tt"})
      checker.words[word] = "better";
  }
  CountingChecker checker;
  TypoChecker typos{checker};
};

TEST_F(TypoCheckerTest, FindsTheMisspelledWordBeforeTheCaret) {
  const std::pair<std::string, std::string> found[] = {{"helo", "helo"},
                                                       {"I will recieve", "recieve"},
                                                       {"5helo", "helo"},
                                                       {"I don’tt", "don’tt"},
                                                       {std::string(5000, 'x') + " über helo", "helo"}};
  for (const auto& [before, word] : found) EXPECT_EQ(typos.misspelledWord(before), word) << before;
  for (const std::string& before : {std::string(300, 'x'), std::string()})
    EXPECT_EQ(typos.misspelledWord(before), std::nullopt);
  for (const char* before : {"helo ", "helo.", "teh", "Helo", "hELO", "hello", "nimbl", "nimbletyp"})
    EXPECT_EQ(typos.misspelledWord(before), std::nullopt) << before;
}

TEST_F(TypoCheckerTest, HoldsBackInATextOfAnotherLanguage) {
  for (const char* word : {"nous", "sommes", "arrivés", "hier", "soir", "avec", "leurs"})
    checker.words[word] = std::nullopt;
  const struct {
    const char* why;
    std::string before;
    bool found;
  } cases[] = {
      {"no other words", "helo", true},
      {"too few words to tell", "nous sommes hier helo", true},
      {"most are unknown", "nous sommes (arrivés) hier, helo", false},
      {"short words and names tell nothing", "Le Nous est un Sommes hier soir helo", true},
      {"half of them are known", "nous sommes hier soir this text goes along helo", true},
      {"the latest count",
       "nous sommes arrivés hier soir avec leurs now known words come again in English over "
       "there where people write helo",
       true},
      {"the word under the caret does not count", "with nous sommes known helo", true},
      {"a text that was cut off inside a word", std::string(3000, 'x') + " nous sommes arrivés hier helo",
       false},
  };
  for (const auto& c : cases) EXPECT_EQ(typos.misspelledWord(c.before).has_value(), c.found) << c.why;
}

TEST_F(TypoCheckerTest, OffersOnlyARealCorrectionAndLooksItUpOnce) {
  checker.words = {{"helo", "hello"}, {"same", "same"}, {"zzzz", std::nullopt}};
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(typos.fix("oh helo"), (TypoFix{"helo", "hello"}));
    EXPECT_EQ(typos.fix("same"), std::nullopt);
    EXPECT_EQ(typos.fix("zzzz"), std::nullopt);
  }
  EXPECT_EQ(checker.asked, 3);
}

TEST_F(TypoCheckerTest, TakesACorrectionThatIsFoundLater) {
  bool told = false;
  typos.onFound([&] { told = true; });
  checker.pending = true;
  EXPECT_EQ(typos.fix("helo"), std::nullopt);
  checker.pending = false;
  checker.found();
  EXPECT_TRUE(told);
  EXPECT_EQ(typos.fix("helo"), (TypoFix{"helo", "better"}));
}

}  // namespace
}  // namespace nimbletype
