// When the first word of a suggestion is there to be drawn, and when all of it is, with the built-in model.
//   growing_suggestion MODEL     one slow enough to see it; tools/models/slow_model.py makes one of any other
#include <array>
#include <cstdio>
#include <optional>

#include "bench/spread.h"
#include "core/completion/asking/request_builder.h"
#include "core/completion/showing/suggestion.h"
#include "core/prompt/reply_cleaning.h"
#include "engines/writing/llama_runtime.h"
#include "platform/scripted/system/recording_system_log.h"
#include "tools/stage/waiting_main_loop.h"

namespace nimbletype {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array sentences{
    "Thank you for your", "Please let me know if you", "I am looking forward to",  "We would like to",
    "It was great to",    "If you have any questions", "Could you please send me", "I hope this email finds"};
constexpr int words = 22;

struct Measured {
  Spread first, whole;
};

void measure(LlamaRuntime& runtime, WaitingMainLoop& loop, const std::string& model,
             const std::string& before, Measured& measured) {
  LlamaRuntime::Job job;
  job.modelPath = model;
  job.request = makeRequest({{}, before, before, words, 0, {}});
  const auto start = Clock::now();
  std::optional<Clock::time_point> first;
  bool done = false;
  const auto isVisible = [&](const std::string& text) {
    return !completeWords(cleanReply(text, {before, words, PromptStyle::raw, {}})).empty();
  };
  const Task task = runtime.run(std::move(job), {[&](const std::string& text) {
                                                   if (!first && isVisible(text)) first = Clock::now();
                                                 },
                                                 [&](const auto&) { done = true; }});
  loop.runUntil([&] { return done; });
  const auto end = Clock::now();
  measured.first.add(first.value_or(end) - start);
  measured.whole.add(end - start);
}

void run(const std::string& model) {
  WaitingMainLoop loop;
  RecordingSystemLog log;
  LlamaRuntime runtime(loop, log);
  Measured warm, measured;
  measure(runtime, loop, model, "Hello", warm);
  for (int round = 0; round < 5; ++round)
    for (const char* sentence : sentences) measure(runtime, loop, model, sentence, measured);
  Spread::printHead("after the request, ms until");
  measured.first.print("the first whole word");
  measured.whole.print("the whole suggestion");
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  if (argc != 2) return std::fprintf(stderr, "usage: growing_suggestion MODEL\n"), 2;
  nimbletype::run(argv[1]);
}
