#include <gtest/gtest.h>

#include "text/text.h"

namespace nimbletype::text {
namespace {

struct PropertyCase {
  std::string character;
  bool whitespace = false, lineBreak = false, letter = false, digit = false;
};

TEST(CharacterProperties, Table) {
  const std::vector<PropertyCase> table{
      {.character = ""},
      {.character = " ", .whitespace = true},
      {.character = "\t", .whitespace = true},
      {.character = "\u00A0", .whitespace = true},
      {.character = "\u202F", .whitespace = true},
      {.character = "\u3000", .whitespace = true},
      {.character = "\u200B"},
      {.character = "\n", .whitespace = true, .lineBreak = true},
      {.character = "\v", .whitespace = true, .lineBreak = true},
      {.character = "\f", .whitespace = true, .lineBreak = true},
      {.character = "\r\n", .whitespace = true, .lineBreak = true},
      {.character = "\u0085", .whitespace = true, .lineBreak = true},
      {.character = "\u2028", .whitespace = true, .lineBreak = true},
      {.character = "\u2029", .whitespace = true, .lineBreak = true},
      {.character = "a", .letter = true},
      {.character = "É", .letter = true},
      {.character = "e\u0301", .letter = true},
      {.character = "ж", .letter = true},
      {.character = "字", .letter = true},
      {.character = "7", .digit = true},
      {.character = "٣", .digit = true},
      {.character = "7\uFE0F\u20E3", .digit = true},
      {.character = "_"},
      {.character = "👍"},
      {.character = "\xFF"},
  };
  for (const auto& c : table) {
    SCOPED_TRACE(c.character);
    EXPECT_EQ(isWhitespace(c.character), c.whitespace);
    EXPECT_EQ(isLineBreak(c.character), c.lineBreak);
    EXPECT_EQ(isLetter(c.character), c.letter);
    EXPECT_EQ(isDigit(c.character), c.digit);
  }
}

struct TrimCase {
  std::string text, trimmed, start, end;
};

TEST(Trimming, Table) {
  const std::vector<TrimCase> table{
      {"", "", "", ""},
      {" \u00A0\r\n\t\u2028", "", "", ""},
      {"  a b\u3000\n", "a b", "a b\u3000\n", "  a b"},
      {"\u00A0é\u00A0", "é", "é\u00A0", "\u00A0é"},
      {"x", "x", "x", "x"},
  };
  for (const auto& c : table) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(trimmed(c.text), c.trimmed);
    EXPECT_EQ(trimmedStart(c.text), c.start);
    EXPECT_EQ(trimmedEnd(c.text), c.end);
    EXPECT_EQ(isBlank(c.text), c.trimmed.empty());
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

struct WordsCase {
  std::string text;
  std::size_t count = 0;
  std::string firstTwo;
};

TEST(Words, AreRunsOfNonWhitespace) {
  const std::vector<WordsCase> table{
      {"", 0, ""},
      {" \n", 0, " \n"},
      {"one", 1, "one"},
      {"one ", 1, "one "},
      {" one  two ", 2, " one  two"},
      {"don't stop,\u00A0now", 3, "don't stop,"},
      {"één\ntwéé drié", 3, "één\ntwéé"},
  };
  for (const auto& c : table) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(wordCount(c.text), c.count);
    EXPECT_EQ(firstWords(c.text, 2), c.firstTwo);
    EXPECT_EQ(firstWords(c.text, 0), "");
  }
}

}  // namespace
}  // namespace nimbletype::text
