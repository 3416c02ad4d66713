// What a full writing memory costs: two thousand passages of four hundred characters.
#include <benchmark/benchmark.h>

#include "personal/memory/memory_json.h"
#include "personal/memory/writing_memory.h"
#include "platform/scripted/storage/memory_file_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/scripted_background_work.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {
namespace {

class NoLog : public SystemLog {
  void log(std::string_view, std::string_view) override {}
};

// No two alike, of words that come again now and then.
std::string writing(const std::vector<std::string>& words, std::size_t seed, std::size_t length) {
  std::string text = std::to_string(seed);
  for (std::size_t state = seed + 1; text.size() < length;) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    text += words[(state >> 33) % words.size()];
  }
  return text;
}

// As many words as an everyday vocabulary has.
std::vector<std::string> vocabulary(const std::vector<std::string>& stems,
                                    const std::vector<std::string>& ends) {
  std::vector<std::string> words;
  for (const auto& stem : stems)
    for (const auto& end : ends) words.push_back(stem + end);
  return words;
}

const auto english =
    vocabulary({" tom", " meet", " contr", " gard", " oft", " every", " wou", " rath", " trav", " nort",
                " spri", " trai", " lett", " quiet", " of", " a"},
               {"", "er", "ing", "s", "ed", "ly", "able", "ness", "ful", "est", "ion", "al"});
const auto japanese = vocabulary({"今日", "天気", "公園", "会議", "資料", "電車", "手紙", "旅行"},
                                 {"は", "が", "を", "に", "まで", "から", "です", "でした"});

struct Desk {
  explicit Desk(const std::vector<std::string>& words) : words_(words) {
    memory.load();
    loop.advance(Milliseconds(0));
    for (std::size_t i = 0; i < mostPassages; ++i)
      memory.remember(writing(words, i, 400), "app:" + std::to_string(i % 7), loop.wallNow());
    loop.advance(WritingMemory::saveDelay);
  }
  const std::vector<std::string>& words_;
  VirtualMainLoop loop;
  MemoryFileStore file;
  MemorySecretStore secrets{loop};
  ScriptedBackgroundWork background{loop};
  NoLog log;
  WritingMemory memory{{file, secrets, background, loop, log}};
};

void choose(benchmark::State& state, const std::vector<std::string>& words) {
  const Desk desk(words);
  const std::string context = writing(words, 7777, 3000);
  for (auto _ : state) benchmark::DoNotOptimize(desk.memory.passages(context, "app:3", 12));
}
BENCHMARK_CAPTURE(choose, english, english)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(choose, japanese, japanese)->Unit(benchmark::kMicrosecond);

// What the main thread does when a field is left.
void remember(benchmark::State& state, const std::vector<std::string>& words) {
  Desk desk(words);
  std::size_t i = mostPassages;
  for (auto _ : state) desk.memory.remember(writing(words, ++i, 3500), "app:3", desk.loop.wallNow());
}
BENCHMARK_CAPTURE(remember, english, english)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(remember, japanese, japanese)->Unit(benchmark::kMicrosecond);

// The same while a save runs with the passages as they were.
void rememberWhileSaving(benchmark::State& state) {
  Desk desk(english);
  std::size_t i = mostPassages;
  for (auto _ : state) {
    state.PauseTiming();
    desk.background.hold();
    desk.loop.advance(WritingMemory::saveDelay);
    state.ResumeTiming();
    desk.memory.remember(writing(english, ++i, 3500), "app:3", desk.loop.wallNow());
    state.PauseTiming();
    desk.background.release();
    desk.loop.advance(Milliseconds(0));
    state.ResumeTiming();
  }
}
BENCHMARK(rememberWhileSaving)->Unit(benchmark::kMicrosecond);

// In the background.
void sealAll(benchmark::State& state) {
  const Desk desk(english);
  const SecretBytes key = newSealingKey();
  for (auto _ : state) {
    const SecretBytes plain = encoded(desk.memory.entries());
    benchmark::DoNotOptimize(sealed({plain.data(), plain.size()}, key));
  }
}
BENCHMARK(sealAll)->Unit(benchmark::kMillisecond);

void openAll(benchmark::State& state) {
  const Desk desk(english);
  const std::string& secret = desk.secrets.secrets.at(MemoryVault::account);
  const SecretBytes key(secret.begin(), secret.end());
  for (auto _ : state) {
    const auto plain = opened(*desk.file.content, key);
    benchmark::DoNotOptimize(decoded({plain->data(), plain->size()}));
  }
}
BENCHMARK(openAll)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nimbletype

BENCHMARK_MAIN();
