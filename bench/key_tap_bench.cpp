// The time from the desktop's asking about a key to the tap's answer, and what it takes from the heap.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>

#include "input/keys/key_tap.h"
#include "platform/scripted/keys/scripted_event_tap.h"

namespace {

std::size_t allocations = 0;

void* counted(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
  return counted(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace nimbletype {
namespace {

struct NoLog : SystemLog {
  void log(std::string_view, std::string_view message) override { benchmark::DoNotOptimize(message.data()); }
};

void answerKey(benchmark::State& state, const KeyPress& press) {
  ScriptedEventTap desktop;
  NoLog log;
  KeyTap tap(desktop, log);
  tap.setHandler([](const TapEvent& event) {
    const auto* key = std::get_if<KeyPress>(&event);
    return key && key->keyCode == key::tab;
  });
  tap.setTakeable(std::vector{KeyCombo{key::tab, {}}});
  tap.start();
  const TapEvent event(press);
  const std::size_t before = allocations;
  for (auto _ : state) benchmark::DoNotOptimize(desktop.send(event));
  state.counters["allocations/key"] =
      static_cast<double>(allocations - before) / static_cast<double>(state.iterations());
}

BENCHMARK_CAPTURE(answerKey, letter, KeyPress{0, {}, "a", false});
BENCHMARK_CAPTURE(answerKey, longText, KeyPress{0, {}, "12345678", false});
// The three keys that are logged pay for their line of the log.
BENCHMARK_CAPTURE(answerKey, tab, KeyPress{key::tab, {}, "\t", false});

}  // namespace
}  // namespace nimbletype

BENCHMARK_MAIN();
