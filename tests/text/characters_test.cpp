#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <array>
#include <memory>
#include <random>

#include "text/text.h"

namespace nimbletype::text {
namespace {

using testing::ElementsAreArray;
using Pieces = std::vector<std::string>;

std::string joined(const Pieces& pieces, std::size_t from, std::size_t to) {
  std::string all;
  for (auto i = from; i < to; ++i) all += pieces[i];
  return all;
}

// Every question about characters answers from the same cut.
void expectCut(const Pieces& pieces) {
  const auto s = joined(pieces, 0, pieces.size());
  SCOPED_TRACE(s);
  EXPECT_THAT(characters(s), ElementsAreArray(pieces));
  EXPECT_EQ(characterCount(s), pieces.size());
  for (std::size_t n = 0; n <= pieces.size() + 1; ++n) {
    const auto size = pieces.size();
    const auto head = std::min(n, size), tail = size - head;
    EXPECT_EQ(firstCharacters(s, n), joined(pieces, 0, head));
    EXPECT_EQ(lastCharacters(s, n), joined(pieces, tail, size));
    EXPECT_EQ(dropFirst(s, n), joined(pieces, head, size));
    EXPECT_EQ(clipped(s, n), joined(pieces, 0, head) + (n < size ? "…" : ""));
  }
  EXPECT_EQ(firstCharacter(s), pieces.empty() ? "" : pieces.front());
  EXPECT_EQ(lastCharacter(s), pieces.empty() ? "" : pieces.back());
}

TEST(Characters, AreCutAsPeopleCount) {
  const std::vector<Pieces> table{{},
                                  {"a"},
                                  {"a", "b", " ", "c"},
                                  {"a", "\r\n", "\r\n", "b", "\n", "\r", "\t"},
                                  {"\r", "\r\n"},
                                  {"é", "e\u0301", "x", "e\u0301\u0308"},
                                  {"п", "р", "и", "в", "е", "т", " ", "м", "и", "р"},
                                  {"漢", "字", "。"},
                                  {"한", "글", "\u1112\u1161\u11AB", "!"},
                                  {"👍", "👍🏽", "👩‍👩‍👧", "❤️", "1️⃣", "."},
                                  {"🇩🇪", "🇫🇷", "🇯"},
                                  {"a", "🇩🇪", "🇫🇷", "🇯🇵", "b"},
                                  {"न", "म"},
                                  {"กำ", "ก"},
                                  {"\u0600"
                                   "1",
                                   "2"},
                                  {"\u0301", "a"},
                                  {"\n", "\u0301", "b"}};
  for (const auto& pieces : table) expectCut(pieces);
}

Pieces cutByIcu(const std::string& s) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> it(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  const auto text = icu::UnicodeString::fromUTF8(s);
  it->setText(text);
  Pieces pieces;
  for (int from = 0, to = it->next(); to != icu::BreakIterator::DONE; from = to, to = it->next())
    text.tempSubStringBetween(from, to).toUTF8String(pieces.emplace_back());
  return pieces;
}

// The short cuts must never cut differently from ICU over the whole text.
TEST(Characters, AgreeWithIcuOnRandomText) {
  const std::vector<std::string> alphabet{
      "a",  "1", " ",      "\r",     "\n", "\t",     "é",      "\u0301", "\u200D", "\uFE0F", "👩",
      "🏽", "❤", "🇩",      "🇪",      "한", "하",     "\u1100", "\u1161", "\u11A8", "क",      "\u094D",
      "ष",  "ि", "\u0600", "\u0E33", "ก",  "\u00AD", "\u2028", "ж",      "\u0903", "ت",      "©"};
  std::mt19937 random(7);
  for (int round = 0; round < 600; ++round) {
    std::string s;
    for (std::size_t length = random() % 14; length > 0; --length) s += alphabet[random() % alphabet.size()];
    expectCut(cutByIcu(s));
  }
}

TEST(Characters, AreViewsOfTheArgument) {
  const std::string s = "one e\u0301 two";
  EXPECT_EQ(lastCharacters(s, 3).data(), s.data() + s.size() - 3);
  EXPECT_EQ(firstCharacters(s, 3).data(), s.data());
}

TEST(Encoding, GoesBothWays) {
  const std::vector<std::pair<std::string, std::u16string>> table{
      {"", u""},
      {"plain\r\n", u"plain\r\n"},
      {"naïve – 漢字", u"naïve – 漢字"},
      {"👩🏽‍💻 ok", u"👩🏽‍💻 ok"},
      {std::string("a\0b", 3), std::u16string(u"a\0b", 3)}};
  for (const auto& [utf8, utf16] : table) {
    SCOPED_TRACE(utf8);
    EXPECT_EQ(toUtf16(utf8), utf16);
    EXPECT_EQ(toUtf8(utf16), utf8);
    EXPECT_EQ(utf16Length(utf8), utf16.size());
    EXPECT_TRUE(isValidUtf8(utf8));
    EXPECT_EQ(repaired(utf8), utf8);
  }
}

TEST(Encoding, MalformedBytesReadAsReplacementCharacters) {
  const std::vector<std::array<std::string, 3>> table{
      {"never valid", "a\xFFz", "a\uFFFDz"},    {"cut off", "a\xC3", "a\uFFFD"},
      {"cut off later", "\xE2\x82", "\uFFFD"},  {"no lead byte", "\x80x", "\uFFFDx"},
      {"overlong", "\xC0\xAF", "\uFFFD\uFFFD"}, {"cut off emoji", "\xF0\x9F\x98 b", "\uFFFD b"}};
  for (const auto& [what, bytes, shown] : table) {
    SCOPED_TRACE(what);
    EXPECT_FALSE(isValidUtf8(bytes));
    EXPECT_EQ(repaired(bytes), shown);
    EXPECT_EQ(toUtf16(bytes), toUtf16(shown));
    EXPECT_EQ(utf16Length(bytes), utf16Length(shown));
    EXPECT_EQ(characterCount(bytes), characterCount(shown));
    EXPECT_EQ(trimmed(" " + bytes + " "), bytes);
  }
}

TEST(Encoding, ALoneSurrogateBecomesAReplacementCharacter) {
  EXPECT_EQ(toUtf8(std::u16string{u'a', 0xD83D, u'b'}), "a\uFFFDb");
  EXPECT_EQ(toUtf8(std::u16string{0xDE00}), "\uFFFD");
  EXPECT_EQ(toUtf8(std::u16string{0xD83D}), "\uFFFD");
}

}  // namespace
}  // namespace nimbletype::text
