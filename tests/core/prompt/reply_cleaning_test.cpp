#include "core/prompt/reply_cleaning.h"

#include <gtest/gtest.h>

#include <set>

namespace nimbletype {
namespace {

std::string clean(std::string_view reply, std::string_view before = "so ", int words = 10) {
  return cleanReply(reply,
                    {.before = before, .words = words, .style = PromptStyle::raw, .rewritesWord = true});
}

TEST(ReplyCleaning, Steps) {
  const struct {
    const char* reply;
    const char* cleaned;
  } cases[] = {
      {"plain words", "plain words"},
      {"<think>hm\nhm</think>\n\nthe answer", "the answer"},
      {"one <think>a</think>two", "one two"},
      {"<think>never ends", ""},
      {"<think>a<think>b</think>c</think>ok", "ok"},
      {"fine.[Context] Mail", "fine."},
      {"fine [On screen] x [Now] y", "fine"},
      {"[Writer's phrasing] x", ""},
      {"Continuation:   the rest", "the rest"},
      {"NEXT WORDS: the rest", "the rest"},
      {"the output: this", "the output: this"},
      {"```the rest```", "the rest"},
      {"\"\"\"the rest", "the rest"},
      {"“the rest”", "the rest"},
      {"\"the rest\"", "the rest"},
      {"'the rest'", "the rest"},
      {"\"", "\""},
      {"“the \" rest", "“the \" rest"},
      {"I’m sorry, but no", ""},
      {"As an AI model I", ""},
      {"I can't help it", ""},
      {"I cannot help", ""},
      {"I'm sorry you missed it", "I'm sorry you missed it"},
      {"a  b\t\tc \t d", "a b c d"},
      {"a\tb", "a\tb"},
      {"1 2 3 4 5 6 7 8 9 10 11 12", "1 2 3 4 5 6 7 8 9 10"},
      {"trailing  ", "trailing"},
      {"first line\nsecond", "first line"},
      {"   ", ""},
      {"", ""},
  };
  for (const auto& [reply, cleaned] : cases) EXPECT_EQ(clean(reply), cleaned) << reply;
}

TEST(ReplyCleaning, StartsExactlyAtTheCaret) {
  const struct {
    const char* before;
    const char* reply;
    const char* cleaned;
  } cases[] = {
      // the end of the typed text, repeated
      {"Let me know if", "Let me know if you can", " you can"},
      {"Let me know if ", "know if you can", "you can"},
      {"the quick brown", " quick brown fox", " fox"},
      {"Hello.", ". How are you", " How are you"},
      {"Hmm.", ".. well", ".. well"},
      {"we can", " cancel it", " cancel it"},
      {"yes", "yes", ""},
      {"naïve caf", "café", "é"},
      // an unfinished word, begun anew
      {"I'll be out of the off", "office until Monday", "ice until Monday"},
      {"I'll be out of the off", "Office until Monday", "ice until Monday"},
      {"I'll be out of the off", "ice until Monday", "ice until Monday"},
      {"I", "intend to", "intend to"},
      {"ban", "ana", "ana"},
      // one blank at the joint
      {"word ", " next", "next"},
      {"word\u00a0", " next", "next"},
      {"word", " next", " next"},
      {"word", "  next", " next"},
      {"", " Dear", "Dear"},
      {"(", " see below)", "see below)"},
      {"Hi Ben,", "thanks", " thanks"},
      {"Done.", "Next", " Next"},
      {"example.", "com", "com"},
      {"3.", "5", "5"},
      {"U.S.", "Army", "Army"},
      {"word", "\n next", " next"},
      {"it", "'s fine", "'s fine"},
      {"see http:", "//example.org", "//example.org"},
  };
  for (const auto& [before, reply, cleaned] : cases)
    EXPECT_EQ(clean(reply, before), cleaned) << '"' << before << "\" + \"" << reply << '"';
}

// An engine that was not asked to write the unfinished word again means what it writes.
TEST(ReplyCleaning, WhatOnlyLooksLikeARepetitionStays) {
  const struct {
    const char* before;
    const char* reply;
    const char* cleaned;
  } cases[] = {
      {"20", "20 when", "20 when"},    {"at 5", "55 1234", "55 1234"},     {"so", "so", "so"},
      {"the off", "office", "office"}, {"I think that", " that", " that"}, {"at 5", "at 5 sharp", " sharp"},
      {"Hello.", ". So", " So"},
  };
  for (const auto& [before, reply, cleaned] : cases)
    EXPECT_EQ(cleanReply(reply, {.before = before, .words = 10}), cleaned) << before << " + " << reply;
}

TEST(ReplyCleaning, AChatReplyMayLackItsBlank) {
  const std::set<std::string, std::less<>> words{"any", "questions", "thing", "anything",
                                                 "off", "ice",       "office"};
  const WordTest known = [&](std::string_view word) { return words.contains(word); };
  const auto chat = [&](std::string_view before, std::string_view reply) {
    return cleanReply(
        reply,
        {.before = before, .words = 10, .style = PromptStyle::instruct, .isSpelled = known, .isSeen = {}});
  };
  EXPECT_EQ(chat("if you have any", "questions"), " questions");
  EXPECT_EQ(chat("if you have any", "thing"), "thing");
  EXPECT_EQ(chat("out of the off", "ice"), "ice");
  EXPECT_EQ(chat("an unknown wor", "questions"), "questions");
}

}  // namespace
}  // namespace nimbletype
