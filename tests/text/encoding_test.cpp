#include <gtest/gtest.h>

#include <array>

#include "text/text.h"

namespace nimbletype::text {
namespace {

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
