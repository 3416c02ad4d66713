#pragma once
#include <gtest/gtest.h>

#include "platform/language/spell_checker.h"

// What every `SpellChecker` must do. Instantiate with a default-constructible harness that has
//   SpellChecker& checker();                              // of English, ready
//   void runUntil(const std::function<bool()>& done);     // lets the main loop run
namespace nimbletype {

template <typename Harness>
class SpellCheckerConformance : public testing::Test {
 protected:
  SpellChecker& checker() { return harness_.checker(); }
  // The correction as soon as the checker has it.
  std::optional<std::string> corrected(std::string_view word) {
    int told = 0;
    checker().onFound([&] { ++told; });
    auto correction = checker().correction(word);
    if (checker().isLookingUp(word)) {
      EXPECT_EQ(correction, std::nullopt) << word << " is known and still looked up";
      EXPECT_EQ(told, 0) << "told before a later turn";
      harness_.runUntil([&] { return told > 0; });
      correction = checker().correction(word);
    }
    EXPECT_FALSE(checker().isLookingUp(word)) << word << " is looked up for ever";
    EXPECT_EQ(checker().correction(word), correction) << word;
    checker().onFound({});
    return correction;
  }

  Harness harness_;
};

TYPED_TEST_SUITE_P(SpellCheckerConformance);

TYPED_TEST_P(SpellCheckerConformance, KnowsWrongWordsAndTheirCorrections) {
  const struct {
    const char* word;
    bool misspelled;
    std::optional<std::string> correction;
  } cases[] = {{"receive", false, std::nullopt},
               {"recieve", true, "receive"},
               {"doesnt", true, "doesn't"},
               {"xqzvkjw", true, std::nullopt}};
  for (const auto& c : cases) {
    EXPECT_EQ(this->checker().isMisspelled(c.word), c.misspelled) << c.word;
    EXPECT_FALSE(this->checker().isLookingUp(c.word)) << c.word << " was not asked for";
    if (c.misspelled) {
      EXPECT_EQ(this->corrected(c.word), c.correction) << c.word;
    }
  }
}

REGISTER_TYPED_TEST_SUITE_P(SpellCheckerConformance, KnowsWrongWordsAndTheirCorrections);

}  // namespace nimbletype
