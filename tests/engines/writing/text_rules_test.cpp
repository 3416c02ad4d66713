// The small rules that turn tokens into the text of a suggestion.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <tuple>

#include "engines/writing/confidence.h"
#include "engines/writing/stop_sequences.h"
#include "engines/writing/utf8_accumulator.h"

namespace nimbletype {
namespace {

TEST(Utf8Accumulator, HoldsBackCharactersThatAreNotComplete) {
  Utf8Accumulator text;
  const std::pair<const char*, const char*> steps[] = {
      {"caf", "caf"},        {"\xC3", "caf"},           {"\xA9", "café"},        {" \xF0\x9F", "café "},
      {"\x9A", "café "},     {"\x80", "café 🚀"},       {"\xE2\x80", "café 🚀"}, {"\x99s", "café 🚀’s"},
      {"\xC3", "café 🚀’s"}, {"(", "café 🚀’s\uFFFD("},
  };
  for (const auto& [bytes, expected] : steps) {
    text.append(bytes);
    EXPECT_EQ(text.text(), expected);
  }
}

TEST(StopSequences, CutBeforeTheEarliestMatch) {
  const std::tuple<const char*, std::vector<std::string>, std::optional<std::size_t>> cases[] = {
      {"one\ntwo [x", {"[x", "\n"}, 3}, {"one two", {"\n\n"}, {}}, {"one", {""}, {}},
      {"one two", {"o", "one t"}, 0},   {"", {"x"}, {}},           {"abcabd", {"abd", "cab"}, 2}};
  for (const auto& [text, stops, at] : cases) EXPECT_EQ(firstStop(text, stops), at) << text;
}

TEST(Confidence, LogProbabilitiesOfAllTokensSumToOne) {
  const std::array logits{2.0F, -1.0F, 500.0F, 499.0F, -INFINITY};
  double sum = 0;
  for (const float logit : logits) sum += std::exp(logit - logSumExp(logits));
  EXPECT_NEAR(sum, 1, 1e-6);
}

TEST(Confidence, ADoubtfulTokenLeavesWholeWords) {
  struct Case {
    const char *before, *after, *kept;
  };
  const Case cases[] = {
      {" until next", " until next week", " until next"},      // a doubtful word of its own
      {" until Mond", " until Monday", " until "},             // the end of a word
      {"ice until", "ice until,", "ice until"},                // a mark
      {" the cat", " the cat's", " the cat"},                  // an apostrophe
      {"on the 1", "on the 14", "on the "},                    // a digit
      {"  wo", "  word two", "  wo"},                          // nothing would be left
      {"ice un", "ice un\n", "ice un"},                        // a line break
      {" Grüße aus Mü", " Grüße aus München", " Grüße aus "},  // letters outside of ASCII
  };
  for (const auto& each : cases)
    EXPECT_EQ(std::string(each.after).substr(0, confidentLength(each.before, each.after)), each.kept);
}

}  // namespace
}  // namespace nimbletype
