#include "core/completion/offers/colon_word.h"

#include <gtest/gtest.h>

#include <string>

namespace nimbletype {
namespace {

// The whole of it, and the word.
std::string found(std::string_view before) {
  const auto word = colonWord(before);
  if (!word) return "none";
  return std::string(word->text) + "|" + std::string(word->word) + (word->closed ? "|closed" : "");
}

TEST(ColonWord, BeginsWhereNoProseHasAColon) {
  const std::pair<const char*, const char*> cases[] = {
      {":", ":|"},
      {"So :", ":|"},
      {"So\n:", ":|"},
      {"(:ro", ":ro|ro"},
      {"So :rock", ":rock|rock"},
      {"So\u00A0:rock", ":rock|rock"},
      {"So :+1", ":+1|+1"},
      {"So :heart_eyes", ":heart_eyes|heart_eyes"},
      {"So :Élan", ":Élan|Élan"},
      {"So :rocket:", ":rocket:|rocket|closed"},
      {"🚀:ta", ":ta|ta"},
      {"👍🏽:ta", ":ta|ta"},
      {"🚀:", "none"},
      {"", "none"},
      {"Note:", "none"},
      {"Note:this", "none"},
      {"e.g.:", "none"},
      {"10:30", "none"},
      {"at 10:", "none"},
      {"http:", "none"},
      {"https://host:80", "none"},
      {"std::vec", "none"},
      {"So ::", "none"},
      {"So :-", "none"},
      {"So :-)", "none"},
      {"So :rocket ", "none"},
      {"So :rocket::", "none"},
      {"\"a\":b", "none"},
      {"是:ro", "none"},
      {" :anexceptionallylongwordthatnoemojihasforaname", "none"},
  };
  for (const auto& [before, expected] : cases) EXPECT_EQ(found(before), expected) << before;
}

TEST(EmoticonCandidate, IsAllSinceTheLastBlank) {
  const std::pair<const char*, const char*> cases[] = {
      {":)", ":)"},       {"fine :)", ":)"},    {"fine\n:-D", ":-D"}, {"fine :'(", ":'("}, {"(:)", "(:)"},
      {"fine:)", "none"}, {"fine :) ", "none"}, {"", "none"},         {"été🚀", "été🚀"}};
  for (const auto& [before, expected] : cases)
    EXPECT_EQ(emoticonCandidate(before).value_or("none"), expected) << before;
}

}  // namespace
}  // namespace nimbletype
