#include "personal/stats/stats_store.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <tuple>

#include "platform/scripted/language/scripted_region_source.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "text/format/timestamp.h"

namespace nimbletype {
namespace {

using nlohmann::json;
using namespace std::chrono_literals;

struct World {
  explicit World(std::optional<std::string> content = std::nullopt) {
    file.content = std::move(content);
    store.emplace(file, loop, log, region);
  }
  void setNow(std::string_view time) { loop.setWallNow(text::fromIso8601(time).value()); }
  void accept(const std::string& text, const std::string& app = "app:a") {
    store->recordAccept(text, app, loop.wallNow());
  }
  json saved() {
    loop.advance(StatsStore::saveDelay);
    return json::parse(file.content.value_or("{}"));
  }
  std::vector<std::int64_t> lastWords(int count) const {
    std::vector<std::int64_t> words;
    for (const auto& day : store->lastDays(count)) words.push_back(day.stats.words);
    return words;
  }

  VirtualMainLoop loop;
  MemoryFileStore file;
  RecordingSystemLog log;
  ScriptedRegionSource region;
  std::optional<StatsStore> store;
};

TEST(StatsStore, WritesOnceTwoSecondsAfterTheLastChange) {
  World w;
  w.accept("Hello, world!");
  w.loop.advance(1999ms);
  w.accept(" — ", "app:b");
  w.store->recordShown(w.loop.wallNow());
  w.store->recordLatency(123ms);
  w.loop.advance(1999ms);
  EXPECT_EQ(w.file.writes, 0);
  w.loop.advance(1ms);
  EXPECT_EQ(w.file.writes, 1);
  EXPECT_EQ(*w.file.content, R"({"days":{"2025-03-07":{"words":2,"characters":16,"accepts":2,"shown":1,)"
                             R"("apps":{"app:a":2,"app:b":0}}},"latencies":[123]})");
  w.file.failsToWrite = true;
  w.accept("lost");
  w.loop.advance(2s);
  w.file.failsToWrite = false;
  w.store.reset();  // what could not be saved is tried once more
  EXPECT_EQ(json::parse(*w.file.content).at("days").at("2025-03-07").at("words"), 3);
}

TEST(StatsStore, ReadsWhatItWroteAndSumsItUp) {
  World w;
  w.accept("one two");
  w.accept("three", "app:b");
  w.setNow("2025-03-08T10:00:00Z");
  w.accept("four", "app:b");
  w.accept("five six", "app:c");
  w.accept("seven eight", "app:a");
  w.store->recordShown(w.loop.wallNow());
  w.store.emplace(w.file, w.loop, w.log, w.region);
  EXPECT_EQ(w.store->totalWords(), 8);
  EXPECT_EQ(w.store->totalAccepts(), 5);
  EXPECT_EQ(w.store->totalShown(), 1);
  EXPECT_EQ(w.store->appTotals(), (AppWords{{"app:a", 4}, {"app:b", 2}, {"app:c", 2}}));
  const std::vector<std::pair<std::string, std::int64_t>> top{{"app:a", 2}, {"app:c", 2}, {"app:b", 1}};
  EXPECT_EQ(w.store->topAppsToday(), top);
  EXPECT_EQ(w.store->summary(), "Under a minute of typing today. 8 words this week.");
}

TEST(StatsStore, KeepsTheLatest400Latencies) {
  World w;
  for (int i = 0; i <= 400; ++i) w.store->recordLatency(Milliseconds(i));
  ASSERT_EQ(w.store->latencies().size(), 400U);
  EXPECT_EQ(w.store->latencies().front(), 1);
  EXPECT_EQ(w.store->typicalLatency(), 200);
  EXPECT_EQ(w.store->nineInTenLatency(), 360);
}

TEST(StatsStore, CountsDaysWhereTheUserIs) {
  World w;
  w.region.current.timeZone = "Europe/Berlin";
  w.setNow("2025-03-29T22:59:00Z");  // 23:59
  w.accept("one");
  w.setNow("2025-03-29T23:01:00Z");
  w.accept("two words");
  w.setNow("2025-03-30T21:30:00Z");  // the day of 23 hours is nearly over
  w.accept("and three more");
  EXPECT_EQ(w.lastWords(3), (std::vector<std::int64_t>{0, 1, 5}));
  EXPECT_TRUE(w.lastWords(0).empty() && w.lastWords(-3).empty());
  EXPECT_EQ(w.store->streak(), 2);
  w.region.current.timeZone = "Asia/Tokyo";  // where it is the next morning
  EXPECT_EQ(w.lastWords(3), (std::vector<std::int64_t>{1, 5, 0}));
  EXPECT_EQ(w.store->streak(), 2);
  EXPECT_EQ(text::toIso8601(w.store->lastDays(1)[0].date), "2025-03-30T15:00:00Z");
  w.region.current.timeZone = "America/Los_Angeles";  // where it is still the 30th
  EXPECT_EQ(w.lastWords(2), (std::vector<std::int64_t>{1, 5}));
}

TEST(StatsStore, CountsAStreakBackFromTodayOrYesterday) {
  const std::tuple<const char*, std::vector<const char*>, int> table[] = {
      {"nothing", {}, 0},
      {"today", {"2025-03-07"}, 1},
      {"yesterday", {"2025-03-06"}, 1},
      {"too long ago", {"2025-03-05", "2025-03-04"}, 0},
      {"with a gap", {"2025-03-07", "2025-03-06", "2025-03-04"}, 2},
      {"the clock was wrong", {"2025-03-07", "2025-03-08", "2026-01-01"}, 1},
      {"over a month's end", {"2025-03-03", "2025-03-02", "2025-03-01", "2025-02-28", "2025-02-27"}, 5}};
  for (const auto& [what, days, streak] : table) {
    json saved = json::object();
    for (const char* day : days) saved[day]["words"] = 1;
    saved["2025-03-05"]["shown"] = 4;
    World w(json{{"days", saved}}.dump());
    if (streak == 5) w.setNow("2025-03-04T09:00:00Z");
    EXPECT_EQ(w.store->streak(), streak) << what;
  }
}

TEST(StatsStore, MakesTheBestOfAFileThatWasEdited) {
  World w(R"({"version": 3, "latencies": [5, -2, "x", 7.9],
    "days": {"2025-03-07": {"words": -5, "characters": 1e300, "accepts": "many", "shown": 18446744073709551615,
                            "mood": "good", "apps": {"app:a": -1, "app:b": 3}},
             "2025-02-30": {"words": 9}, "someday": 1, "2999-01-01": {"words": 2}}})");
  EXPECT_EQ(w.store->today().words, 0);
  EXPECT_EQ(w.store->today().accepts, 0);
  EXPECT_GT(w.store->totalShown(), 0);
  EXPECT_EQ(w.store->totalWords(), 2);
  EXPECT_EQ(w.store->latencies(), (std::vector<std::int64_t>{5, 0, 7}));
  w.accept("word", "app:b");
  const json saved = w.saved();
  EXPECT_EQ(saved.at("version"), 3);
  EXPECT_EQ(saved.at("days").at("2025-03-07").at("mood"), "good");
  EXPECT_EQ(saved.at("days").at("2025-03-07").at("apps"), (json{{"app:a", 0}, {"app:b", 4}}));
  EXPECT_EQ(saved.at("days").at("2025-02-30").at("words"), 9);
  EXPECT_EQ(saved.at("days").at("someday"), 1);
  EXPECT_EQ(saved.at("days").at("2999-01-01").at("words"), 2);
  EXPECT_TRUE(w.file.asides.empty());
}

TEST(StatsStore, SetsAsideAFileThatHoldsNoStatistics) {
  for (const char* content : {"", "{\"days\":", "[]", "null", R"({"days": [1]})", "\xff\xfe"}) {
    World w(content);
    w.accept("word");
    EXPECT_EQ(w.saved().at("days").size(), 1U);
    EXPECT_EQ(w.file.asides, std::vector<std::string>{content});
  }
}

TEST(StatsStore, ResetForgetsEverything) {
  World w(
      R"({"later": 1, "days": {"2025-03-06": {"words": 9, "apps": {"app:a": 9}}, "x": 1}, "latencies": [1]})");
  w.store->reset();
  EXPECT_EQ(w.store->totalWords(), 0);
  EXPECT_TRUE(w.store->appTotals().empty());
  EXPECT_EQ(w.saved(), json::parse(R"({"days":{},"latencies":[]})"));
}

TEST(StatsStore, TellsWhenAnotherDayBegins) {
  World w;
  w.setNow("2025-03-07T23:59:00Z");
  w.store.emplace(w.file, w.loop, w.log, w.region);
  int told = 0;
  const Task observation = w.store->observe([&told] { ++told; });
  w.loop.advance(59s);
  EXPECT_EQ(told, 0);
  w.loop.advance(1s);
  EXPECT_EQ(told, 1);
  w.region.current.timeZone = "America/Los_Angeles";
  w.loop.advance(15min);  // travels are noticed a little later
  EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace nimbletype
