// What the emoji index costs: once, and at every letter after a colon.
#include <benchmark/benchmark.h>

#include "overlay/emoji/emoji_index.h"

namespace nimbletype {
namespace {

void firstUse(benchmark::State& state) {
  for (auto _ : state) {
    EmojiIndex index;
    benchmark::DoNotOptimize(index.entries().data());
  }
}
BENCHMARK(firstUse)->Unit(benchmark::kMillisecond);

void search(benchmark::State& state, const char* query) {
  EmojiIndex index;
  state.counters["found"] = static_cast<double>(index.matches(query).size());
  for (auto _ : state) benchmark::DoNotOptimize(index.search(query, 8));
}
BENCHMARK_CAPTURE(search, oneLetter, "s")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, insideOfNames, "ing")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, word, "rocket")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(search, nothing, "zzzqqq")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace nimbletype

BENCHMARK_MAIN();
