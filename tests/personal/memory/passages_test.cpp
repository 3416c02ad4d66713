#include "personal/memory/passages.h"

#include <gmock/gmock.h>

#include <tuple>

#include "text/text.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr WallTime start = std::chrono::sys_days{std::chrono::March / 7 / 2025};

std::string repeated(const std::string& piece, std::size_t count) {
  std::string all;
  while (count-- > 0) all += piece;
  return all;
}

TEST(Passages, AreClippedToTheStartOfASentence) {
  const std::string longText = repeated("x", 600), third = repeated("y", 133);
  const std::string unfinished = longText + ". " + third.substr(1);  // too little would be left
  const std::pair<std::string, std::string> cases[] = {{" \n short \n", "short"},
                                                       {repeated("é", 400), repeated("é", 400)},
                                                       {longText, longText.substr(200)},
                                                       {longText + ". " + third, third},
                                                       {unfinished, unfinished.substr(334)},
                                                       {longText + "! One? " + third, "One? " + third},
                                                       {longText + "\r\n" + third, third},
                                                       {longText + "?", (longText + "?").substr(201)}};
  for (const auto& [text, passage] : cases) EXPECT_EQ(clippedPassage(text), passage);
}

TEST(Passages, KeywordsComeFromEveryScript) {
  const std::pair<const char*, std::vector<const char*>> cases[] = {
      {"The QUICK brown-fox, quick!", {"quick", "brown"}},
      {"straße ÄRGER über", {"straße", "ärger", "über"}},
      {"don't x4y2 2025", {"x4y2", "2025"}},
      {"Привет, мир", {"привет"}},
      {"今日は天気がいい", {"今日", "天気"}},
      {"我们明天开会", {"我们", "明天", "开会"}},
      {"สวัสดีครับ", {"สวัสดี", "ครับ"}},
      {"안녕하세요 친구", {"안녕하세요"}},
      {"\xFF\xC3", {}}};
  for (const auto& [text, words] : cases) {
    Keywords expected;
    for (const char* word : words) expected.push_back(keywordsOf(std::string(word)).at(0));
    std::ranges::sort(expected);
    Keywords found = keywordsOf(text);
    // A dictionary may find more than these, but not miss them.
    EXPECT_TRUE(std::ranges::includes(found, expected)) << text;
    if (text::isUnspaced(text::firstCharacter(text))) continue;
    EXPECT_EQ(found, expected) << text;
  }
}

TEST(Passages, GrowInPlaceOfBeingKeptTwice) {
  MemoryEntries entries;
  const auto take = [&](const char* text, const char* app, std::chrono::seconds at) {
    keep(entries, newEntry(text, app, start + at));
  };
  take("We will meet", "app:a", 1s);
  const std::string id = entries[0].id;
  take("We will meet tomorrow", "app:a", 2s);
  take("We will", "app:a", 3s);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].text, "We will meet tomorrow");
  EXPECT_EQ(entries[0].keywords, keywordsOf("We will meet tomorrow"));
  EXPECT_EQ(entries[0].date, start + 3s);
  EXPECT_EQ(entries[0].id, id);
  take("We will meet tomorrow", "app:b", 4s);
  take("We will meet tomorrow", "app:a", 5s);
  EXPECT_EQ(entries.size(), 3U);
  EXPECT_NE(entries[2].id, id);
}

TEST(Passages, TheOldestGiveWay) {
  MemoryEntries entries;
  for (std::size_t i = 0; i <= mostPassages; ++i)
    keep(entries, newEntry("passage " + std::to_string(i) + "!", "app:a", start));
  EXPECT_EQ(entries.size(), mostPassages);
  EXPECT_EQ(entries.front().text, "passage 1!");
}

TEST(Passages, TheBestAreChosen) {
  MemoryEntries entries;
  const auto add = [&](const char* text, const char* app, std::chrono::days ago) {
    entries.push_back(newEntry(text, app, start - ago));
  };
  add("ancient but about contract terms", "app:b", std::chrono::days(900));
  add("same application, long ago", "app:a", std::chrono::days(60));
  add("elsewhere, yesterday", "app:b", std::chrono::days(1));
  add("from a clock gone wrong", "app:b", std::chrono::days(-4000));
  add("elsewhere, just now", "app:b", std::chrono::days(0));
  using Texts = std::vector<std::string>;
  const std::tuple<const char*, const char*, int, Texts> cases[] = {
      {"", "app:a", 0, {}},
      {"", "app:a", -1, {}},
      {"", "app:a", 2, {"same application, long ago", "elsewhere, just now"}},
      {"the CONTRACT terms", "app:a", 1, {"ancient but about contract terms"}},
      // The future is no newer than the newest, and counts as older where all else is equal.
      {"", "app:c", 3, {"elsewhere, just now", "from a clock gone wrong", "elsewhere, yesterday"}}};
  for (const auto& [context, app, limit, chosen] : cases)
    EXPECT_EQ(chosenPassages(entries, context, app, limit), chosen) << context << app << limit;
  EXPECT_EQ(chosenPassages(entries, "", "app:a", 100).size(), entries.size());
  EXPECT_THAT(chosenPassages({newEntry(repeated("ü", 219) + "end", "app:a", start)}, "", "app:a", 1),
              ElementsAre(repeated("ü", 217) + "end"));
  EXPECT_TRUE(chosenPassages({}, "x", "app:a", 3).empty());
}

}  // namespace
}  // namespace nimbletype
