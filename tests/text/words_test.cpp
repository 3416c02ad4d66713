#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "text/text.h"

namespace nimbletype::text {
namespace {

// Whitespace, line break, letter, digit: those of "wbld" that a character is.
TEST(CharacterProperties, AreThoseOfTheScriptItBelongsTo) {
  const std::pair<std::string, std::vector<std::string>> table[] = {
      {"w", {" ", "\t", "\u00A0", "\u202F", "\u3000"}},
      {"wb", {"\n", "\v", "\f", "\r\n", "\u0085", "\u2028", "\u2029"}},
      {"l", {"a", "É", "e\u0301", "ж", "字"}},
      {"d", {"7", "٣", "7\uFE0F\u20E3"}},
      {"", {"", "\u200B", "_", "👍", "\xFF"}},
  };
  for (const auto& [expected, characters] : table)
    for (const auto& character : characters) {
      std::string found;
      if (isWhitespace(character)) found += 'w';
      if (isLineBreak(character)) found += 'b';
      if (isLetter(character)) found += 'l';
      if (isDigit(character)) found += 'd';
      EXPECT_EQ(found, expected) << character;
    }
}

TEST(Trimming, TakesEveryWhitespaceAndNothingElse) {
  const std::array<std::string, 4> table[]{{"", "", "", ""},
                                           {" \u00A0\r\n\t\u2028", "", "", ""},
                                           {"  a b\u3000\n", "a b", "a b\u3000\n", "  a b"},
                                           {"\u00A0é\u00A0", "é", "é\u00A0", "\u00A0é"},
                                           {"x", "x", "x", "x"}};
  for (const auto& [text, both, start, end] : table) {
    SCOPED_TRACE(text);
    EXPECT_EQ(trimmed(text), both);
    EXPECT_EQ(trimmedStart(text), start);
    EXPECT_EQ(trimmedEnd(text), end);
    EXPECT_EQ(isBlank(text), both.empty());
  }
}

TEST(Lowercased, IsIndependentOfTheLocale) {
  const std::vector<std::pair<std::string, std::string>> table{
      {"", ""}, {"ABC xyZ 1", "abc xyz 1"}, {"ÄÉ", "äé"}, {"ΠΆΣ", "πάς"}, {"I’M", "i’m"}, {"İ", "i\u0307"}};
  for (const auto& [from, to] : table) EXPECT_EQ(lowercased(from), to);
}

TEST(WithPlainSpaces, ReplacesEveryNoBreakSpace) {
  const std::vector<std::pair<std::string, std::string>> table{
      {"", ""}, {"plain", "plain"}, {"\u00A0", " "}, {"a\u00A0b\u00A0\u00A0", "a b  "}, {"Â é", "Â é"}};
  for (const auto& [from, to] : table) EXPECT_EQ(withPlainSpaces(from), to);
}

TEST(Words, AreRunsOfNonWhitespace) {
  const std::vector<std::tuple<std::string, std::size_t, std::string>> table{
      {"", 0, ""},
      {" \n", 0, " \n"},
      {"one", 1, "one"},
      {"one ", 1, "one "},
      {" one  two ", 2, " one  two"},
      {"don't stop,\u00A0now", 3, "don't stop,"},
      {"één\ntwéé drié", 3, "één\ntwéé"}};
  for (const auto& [text, count, firstTwo] : table) {
    EXPECT_EQ(wordCount(text), count) << text;
    EXPECT_EQ(firstWords(text, 2), firstTwo) << text;
    EXPECT_EQ(firstWords(text, 0), "") << text;
  }
}

}  // namespace
}  // namespace nimbletype::text
