#include "text/format/byte_count.h"

#include <gtest/gtest.h>

namespace nimbletype::text {
namespace {

TEST(ByteCount, IsShownInTheUnitPeopleWouldChoose) {
  const std::vector<std::pair<std::int64_t, std::string>> table{{0, "0 bytes"},
                                                                {1, "1 byte"},
                                                                {999, "999 bytes"},
                                                                {1000, "1 KB"},
                                                                {1499, "1 KB"},
                                                                {1500, "2 KB"},
                                                                {999'499, "999 KB"},
                                                                {999'500, "1 MB"},
                                                                {12'340'000, "12.3 MB"},
                                                                {999'949'999, "999.9 MB"},
                                                                {999'950'000, "1 GB"},
                                                                {4'967'478'336, "4.97 GB"},
                                                                {5'967'478'336, "5.97 GB"},
                                                                {999'995'000'000, "1 TB"},
                                                                {1'234'560'000'000'000, "1,234.56 TB"}};
  for (const auto& [bytes, text] : table) EXPECT_EQ(formatByteCount(bytes), text) << bytes;
}

TEST(ByteCount, SpeaksTheUsersLanguage) {
  const auto text = formatByteCount(5'967'478'336, "fr_FR");
  EXPECT_TRUE(text.starts_with("5,97") && text.ends_with("Go")) << text;
}

}  // namespace
}  // namespace nimbletype::text
