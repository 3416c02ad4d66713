#include "core/completion/showing/suggestion.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

TEST(Suggestion, TypedOver) {
  const struct {
    const char* before;  // when the suggestion was made
    const char* text;
    const char* now;
    std::optional<std::size_t> typed;
  } cases[] = {
      {"Thank you", " for it", "Thank you", 0},
      {"Thank you", " for it", "Thank you for", 4},
      {"Thank you", " for it", "Thank you for it", 7},
      {"Thank you", " for it", "Thank you for it!", std::nullopt},
      {"Thank you", " for it", "Thank yo", std::nullopt},
      {"Thank you", " for it", "Thank you f\u00a0", std::nullopt},
      {"Thank you", " for it", "Thank you\u00a0for\u00a0", 5},
      {"Thank\u00a0you\u00a0", "for", "Thank you f", 1},
      {"ha", " ha ha", "ha ha ha", 6},
      {"", "Dear Ben", "Dear", 4},
      {"", "Dear Ben", "My Dear", std::nullopt},
      {"Cafe", "\u0301 au lait", "Cafe\u0301 a", 3},
      {"ok ", "👍🏽👍🏽!", "ok 👍🏽", 1},
      {"日本", "語です", "日本語", 1},
  };
  for (const auto& c : cases)
    EXPECT_EQ(typedOver(makeSuggestion(c.text, c.before, "f"), c.now), c.typed) << c.text << " | " << c.now;
}

TEST(Suggestion, ALongTextBeforeTheCaretIsNotComparedWhole) {
  const std::string before(3000, 'x');
  const Suggestion suggestion = makeSuggestion(" and", before, "f");
  EXPECT_LT(suggestion.anchorTail.size(), 100U);
  EXPECT_EQ(typedOver(suggestion, before + " a"), 2U);
}

TEST(Suggestion, NextChunk) {
  struct Case {
    const char* rest;
    const char* both;
    const char* bare;
  };
  const Case cases[] = {
      {"word, next", "word, ", "word"},
      {" word next", " word ", " word"},
      {"'s fine", "'s ", "'s"},
      {"well-known_name’s rest", "well-known_name’s ", "well-known_name’s"},
      {"(see) there", "(", "("},
      {"...) and", "...) ", "...)"},
      {"word.”\u00a0x", "word.”", "word"},
      {"end", "end", "end"},
      {"  ", "  ", "  "},
      {"👍🏽 yes", "👍🏽 ", "👍🏽"},
      {"über alles", "über ", "über"},
      {"", "", ""},
  };
  for (const auto& [rest, both, bare] : cases) {
    EXPECT_EQ(nextChunk(rest, true, true), both) << rest;
    EXPECT_EQ(nextChunk(rest, false, false), bare) << rest;
  }
  EXPECT_EQ(nextChunk("word, next", true, false), "word");
  EXPECT_EQ(nextChunk("word, next", false, true), "word,");
}

TEST(CompleteWords, LeaveOutWhatMayStillGrow) {
  const struct {
    const char *growing, *complete;
  } table[] = {{"", ""},
               {" is", ""},
               {" is ", " is"},
               {" is how", " is"},
               {" don't", ""},
               {" the end.", " the end."},
               {" a (b", " a ("},
               {"我们明天", "我们明天"},
               {"ไปเที่ยว", "ไปเที่ยว"},
               {"明天 see", "明天"}};
  for (const auto& row : table) EXPECT_EQ(completeWords(row.growing), row.complete) << row.growing;
}

}  // namespace
}  // namespace nimbletype
