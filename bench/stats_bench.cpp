// What the statistics cost after ten years of use without a day off.
#include <benchmark/benchmark.h>

#include "personal/stats/stats_file.h"
#include "personal/stats/stats_store.h"
#include "platform/scripted/language/scripted_region_source.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

class NoLog : public SystemLog {
  void log(std::string_view, std::string_view) override {}
};

StatsSnapshot tenYears(text::Day last) {
  StatsSnapshot snapshot;
  const auto end = std::chrono::sys_days(last);
  for (int i = 0; i < 3652; ++i) {
    const DayStats day{.words = 300 + i % 90,
                       .characters = 1800 + i,
                       .accepts = 200 + i % 50,
                       .shown = 900,
                       .apps = {{"app:com.apple.mail", 120},
                                {"app:com.apple.Notes", 80},
                                {"app:com.google.Chrome", 60},
                                {"app:com.tinyspeck.slackmacgap", 40 + i % 90}}};
    snapshot.days.emplace(text::Day(end - std::chrono::days(i)), day);
  }
  snapshot.latencies.assign(StatsStore::mostLatencies, 120);
  return snapshot;
}

struct Desk {
  Desk() { StatsFile(file, log).save(tenYears(text::LocalCalendar("UTC").dayOf(loop.wallNow()))); }
  VirtualMainLoop loop;
  MemoryFileStore file;
  NoLog log;
  ScriptedRegionSource region;
};

void load(benchmark::State& state) {
  Desk desk;
  for (auto _ : state) {
    StatsStore store(desk.file, desk.loop, desk.log, desk.region);
    benchmark::DoNotOptimize(&store);
  }
  state.counters["bytes"] = static_cast<double>(desk.file.content->size());
}
BENCHMARK(load)->Unit(benchmark::kMillisecond);

void save(benchmark::State& state) {
  Desk desk;
  StatsStore store(desk.file, desk.loop, desk.log, desk.region);
  for (auto _ : state) store.saveNow();
}
BENCHMARK(save)->Unit(benchmark::kMillisecond);

void streakOfTenYears(benchmark::State& state) {
  Desk desk;
  const StatsStore store(desk.file, desk.loop, desk.log, desk.region);
  for (auto _ : state) benchmark::DoNotOptimize(store.streak());
}
BENCHMARK(streakOfTenYears)->Unit(benchmark::kMillisecond);

void lastMonth(benchmark::State& state) {
  Desk desk;
  const StatsStore store(desk.file, desk.loop, desk.log, desk.region);
  for (auto _ : state) benchmark::DoNotOptimize(store.lastDays(30));
}
BENCHMARK(lastMonth)->Unit(benchmark::kMicrosecond);

// On the way of every key that takes a word.
void accept(benchmark::State& state) {
  Desk desk;
  StatsStore store(desk.file, desk.loop, desk.log, desk.region);
  for (auto _ : state) store.recordAccept("word ", "app:com.apple.mail", desk.loop.wallNow());
}
BENCHMARK(accept)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace nimbletype

BENCHMARK_MAIN();
