#include "input/context/context_cleaning.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

std::vector<std::string> textsOf(const std::vector<PlacedText>& lines) {
  std::vector<std::string> texts;
  for (const auto& line : lines) texts.push_back(line.text);
  return texts;
}

using Texts = std::vector<std::string>;

TEST(ContextCleaning, CollapsesBlanksAndDropsWhatShowsNothing) {
  EXPECT_EQ(cleanLine("  two \t words\u00A0here "), "two words here");
  EXPECT_EQ(cleanLine("a\uFFFClink\u200B to it"), "alink to it");
  EXPECT_EQ(cleanLine("naïve 👍🏽 日本語"), "naïve 👍🏽 日本語");
  EXPECT_EQ(cleanLine("\uFFFC \u200E"), "");
}

TEST(ContextCleaning, KnowsFragments) {
  for (const char* line : {"", "File", "12:03 14:05", "— — —", "3 of 12", "日本"})
    EXPECT_TRUE(isFragment(line)) << line;
  for (const char* line : {"See you", "Meet at 12:03 then", "明日の会議は三時からです", "Привет всем"})
    EXPECT_FALSE(isFragment(line)) << line;
}

TEST(ContextCleaning, PutsLinesInReadingOrderOnceEach) {
  const std::vector<PlacedText> pieces{
      {"Second line here\nThird line here", {0, 100, 200, 40}},
      {"First line here", {0, 50, 200, 20}},
      {"line here", {300, 10, 50, 20}},        // a link inside the others
      {"First line here", {0, 400, 200, 20}},  // the same again
      {"Close", {0, 0, 50, 20}},
  };
  const auto lines = contextLines(pieces);
  EXPECT_EQ(textsOf(lines), (Texts{"First line here", "Second line here", "Third line here"}));
  EXPECT_EQ(lines.at(2).frame, (TopLeftRect{0, 120, 200, 20}));
}

TEST(ContextCleaning, LeavesOutWhatTheUserWrites) {
  const std::vector<PlacedText> lines{{"Hi Anna, thanks for the plan.", {}},
                                      {"Draft: Hi Anna, thanks for the plan. (unsent)", {}},
                                      {"thanks for", {}},
                                      {"Can you send the plan?", {}}};
  const std::string field = "Hi  Anna, thanks for the plan.\nIt looks";
  EXPECT_EQ(textsOf(withoutOwnText(lines, field)), Texts{"Can you send the plan?"});
  EXPECT_EQ(withoutOwnText(lines, "").size(), lines.size());
}

TEST(ContextCleaning, TakesACopyThatIsNotPastedYet) {
  EXPECT_EQ(usefulCopy(" the address\n", "Send it to ", 100), "the address");
  EXPECT_EQ(usefulCopy("the  address", "Send it to the address", 100), "");
  EXPECT_EQ(usefulCopy("0123456789ab", "", 10), "0123456789");
  for (const char* useless : {"x", " \n "}) EXPECT_EQ(usefulCopy(useless, "", 100), "") << useless;
}

}  // namespace
}  // namespace nimbletype
