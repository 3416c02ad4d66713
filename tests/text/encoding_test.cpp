#include <gtest/gtest.h>

#include "text/text.h"

namespace nimbletype::text {
namespace {

struct EncodingCase {
  std::string utf8;
  std::u16string utf16;
};

class Encoding : public testing::TestWithParam<EncodingCase> {};

TEST_P(Encoding, GoesBothWays) {
  const auto& [utf8, utf16] = GetParam();
  EXPECT_EQ(toUtf16(utf8), utf16);
  EXPECT_EQ(toUtf8(utf16), utf8);
  EXPECT_EQ(utf16Length(utf8), utf16.size());
  EXPECT_TRUE(isValidUtf8(utf8));
  EXPECT_EQ(repaired(utf8), utf8);
}

INSTANTIATE_TEST_SUITE_P(Text, Encoding,
                         testing::Values(EncodingCase{"", u""}, EncodingCase{"plain\r\n", u"plain\r\n"},
                                         EncodingCase{"naïve – 漢字", u"naïve – 漢字"},
                                         EncodingCase{"👩🏽‍💻 ok", u"👩🏽‍💻 ok"},
                                         EncodingCase{std::string("a\0b", 3), std::u16string(u"a\0b", 3)}));

struct MalformedCase {
  std::string bytes;
  std::string shown;
};

class Malformed : public testing::TestWithParam<MalformedCase> {};

TEST_P(Malformed, ReadsAsReplacementCharacters) {
  const auto& [bytes, shown] = GetParam();
  EXPECT_FALSE(isValidUtf8(bytes));
  EXPECT_EQ(repaired(bytes), shown);
  EXPECT_EQ(toUtf16(bytes), toUtf16(shown));
  EXPECT_EQ(utf16Length(bytes), utf16Length(shown));
  EXPECT_EQ(characterCount(bytes), characterCount(shown));
  EXPECT_EQ(trimmed(" " + bytes + " "), bytes);
}

INSTANTIATE_TEST_SUITE_P(Bytes, Malformed,
                         testing::Values(MalformedCase{"a\xFFz", "a\uFFFDz"},            // never valid
                                         MalformedCase{"a\xC3", "a\uFFFD"},              // cut off
                                         MalformedCase{"\xE2\x82", "\uFFFD"},            // cut off later
                                         MalformedCase{"\x80x", "\uFFFDx"},              // no lead byte
                                         MalformedCase{"\xC0\xAF", "\uFFFD\uFFFD"},      // overlong
                                         MalformedCase{"\xF0\x9F\x98 b", "\uFFFD b"}));  // cut off emoji

TEST(LoneSurrogate, BecomesReplacementCharacter) {
  EXPECT_EQ(toUtf8(std::u16string{u'a', 0xD83D, u'b'}), "a\uFFFDb");
  EXPECT_EQ(toUtf8(std::u16string{0xDE00}), "\uFFFD");
  EXPECT_EQ(toUtf8(std::u16string{0xD83D}), "\uFFFD");
}

}  // namespace
}  // namespace nimbletype::text
