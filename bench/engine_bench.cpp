// Speed of the built-in engine.   [NIMBLETYPE_MODEL=FILE] [NIMBLETYPE_THREADS=N] engine_bench
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "engines/writing/text_generation.h"

namespace nimbletype {
namespace {

LlamaModel* sharedModel() {
  static const auto model = [] {
    const char* file = std::getenv("NIMBLETYPE_MODEL");
    const char* threads = std::getenv("NIMBLETYPE_THREADS");
    return LlamaModel::load(file ? file : "models/starter/starter-q8_0.gguf",
                            {.threads = threads ? std::atoi(threads) : 0});
  }();
  return model ? model->get() : nullptr;
}

// `count` tokens that are no text, but cost the same.
Tokens tokensToEvaluate(const LlamaModel& model, std::size_t count) {
  Tokens tokens(count);
  for (std::size_t i = 0; i < count; ++i)
    tokens[i] = static_cast<Token>(300 + i * 7 % (static_cast<std::size_t>(model.vocabulary().size()) - 300));
  return tokens;
}

void prefill(benchmark::State& state) {
  auto* model = sharedModel();
  if (!model) return state.SkipWithError("no model");
  const auto tokens = tokensToEvaluate(*model, static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    model->sequence().clear();
    if (!model->sequence().append(tokens, {})) state.SkipWithError("evaluation failed");
  }
  state.counters["tok/s"] =
      benchmark::Counter(static_cast<double>(state.range(0)), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(prefill)->Arg(64)->Arg(512)->Arg(1024)->Unit(benchmark::kMillisecond)->UseRealTime();

void decode(benchmark::State& state) {
  auto* model = sharedModel();
  if (!model) return state.SkipWithError("no model");
  const auto count = static_cast<std::size_t>(state.range(0));
  const auto tokens = tokensToEvaluate(*model, count);
  for (auto _ : state) {
    model->sequence().clear();
    for (const auto token : tokens)
      if (!model->sequence().append({&token, 1}, {})) state.SkipWithError("evaluation failed");
  }
  state.counters["tok/s"] =
      benchmark::Counter(static_cast<double>(count), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(decode)->Arg(128)->Unit(benchmark::kMillisecond)->UseRealTime();

// What a pause in typing costs: one more letter of a long text, and a suggestion of ten tokens.
void nextLetter(benchmark::State& state) {
  auto* model = sharedModel();
  if (!model) return state.SkipWithError("no model");
  std::string text;
  while (text.size() < 1200) text += "Thank you for your message. I will look into it and come back to you. ";
  GenerationOrder order;
  order.request.maxTokens = 10;
  order.request.temperature = 0;
  order.request.healLast = state.range(0) != 0;
  const std::string more = "I am looking forward to the meeting";
  std::size_t typed = 0;
  for (auto _ : state) {
    typed = typed % more.size() + 1;
    order.request.rawPrompt = text + more.substr(0, typed);
    benchmark::DoNotOptimize(generate(*model, order, {}));
  }
}
BENCHMARK(nextLetter)->ArgName("healed")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace nimbletype

BENCHMARK_MAIN();
