// How long engines go on working after the task of a completion is destroyed, as every key press does.
//   cancel_latency MODEL [LLAMA_SERVER]
#include <QCoreApplication>
#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>

#include "bench/spread.h"
#include "engines/servers/ollama_provider.h"
#include "engines/servers/openai_compatible_provider.h"
#include "engines/writing/llama_runtime.h"
#include "platform/qt/network/qt_http_client.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/storage/memory_secret_store.h"
#include "platform/scripted/system/recording_system_log.h"
#include "tools/stage/servers/llama_server.h"
#include "tools/stage/servers/loopback_server.h"

namespace nimbletype {
namespace {

using Clock = std::chrono::steady_clock;
using Condition = std::function<bool()>;

// Looks often, but leaves the processor to those who work.
void waitUntil(const Condition& condition) {
  while (!condition()) {
    QCoreApplication::processEvents();
    std::this_thread::sleep_for(std::chrono::microseconds(50));
  }
}

void pause(std::chrono::microseconds span) {
  const auto end = Clock::now() + span;
  waitUntil([end] { return Clock::now() >= end; });
}

CompletionRequest endlessRequest() {
  CompletionRequest request;
  request.model = "model";
  request.maxTokens = 100'000'000;
  request.temperature = 1;
  request.rawPrompt = "Once upon a time";
  return request;
}

// From the end of a request's task until the server has seen its connection end.
void measureConnections(MainLoop& loop, HttpClient& http, Preferences& prefs) {
  LoopbackServer server;
  prefs.ollamaURL.set(server.url());
  OllamaProvider provider(http, loop, prefs);
  Spread spread;
  for (int i = 1; i <= 200; ++i) {
    auto task = provider.complete(endlessRequest(), {}, [](const auto&) {});
    waitUntil([&] { return server.received().size() == static_cast<std::size_t>(i); });
    const auto start = Clock::now();
    task.cancel();
    waitUntil([&] { return server.closedByClient() == i; });
    spread.add(Clock::now() - start);
  }
  spread.print("a server sees the connection end");
}

std::size_t count(const std::string& text, std::string_view words) {
  std::size_t found = 0;
  for (auto at = text.find(words); at != text.npos; at = text.find(words, at + 1)) ++found;
  return found;
}

// Until llama-server, which looks for closed connections once a second, has freed its slot.
void measureLlamaServer(MainLoop& loop, HttpClient& http, Preferences& prefs, const std::string& program,
                        const std::string& model) {
  LlamaServer server(program, model, {"--context-shift", "--ignore-eos"});
  prefs.serverURL.set(server.url("/v1"));
  MemorySecretStore secrets(loop);
  OpenAICompatibleProvider provider(http, loop, prefs, secrets);
  Spread spread;
  for (std::size_t i = 1; i <= 20; ++i) {
    auto task = provider.complete(endlessRequest(), {}, [](const auto&) {});
    waitUntil([&] { return count(server.log(), "processing task") == i; });
    pause(std::chrono::milliseconds(70 * i));
    const auto start = Clock::now();
    task.cancel();
    waitUntil([&] { return count(server.log(), "stop processing") == i; });
    spread.add(Clock::now() - start);
  }
  spread.print("llama-server is idle");
}

// Until the built-in model begins with the next request.
class BuiltInModel {
 public:
  BuiltInModel(MainLoop& loop, std::string model)
      : model_(std::move(model)), runtime_(loop, log_, {}, hooks()) {}

  void measure(const char* name, const std::string& prompt, int maxTokens, std::chrono::microseconds step) {
    Spread spread;
    for (int i = 0; spread.count() < 200; ++i) {
      finish("unrelated " + std::to_string(i));  // leaves nothing to reuse
      bool ended = false;
      auto task = start(prompt, maxTokens, &ended);
      waitUntil([this] { return chunks_ > 0; });
      pause(step * (i % 20));
      if (ended) continue;
      const auto begin = Clock::now();
      task.cancel();
      waiting_ = true;
      finish(prompt.substr(0, 20));
      spread.add(resumed_ - begin);
    }
    spread.print(name);
  }

 private:
  RuntimeHooks hooks() {
    RuntimeHooks hooks;
    hooks.beforeChunk = [this](std::size_t) {
      if (waiting_.exchange(false)) resumed_ = Clock::now();
      ++chunks_;
    };
    return hooks;
  }
  Task start(const std::string& prompt, int maxTokens, bool* done) {
    chunks_ = 0;
    LlamaRuntime::Job job;
    job.modelPath = model_;
    job.request = endlessRequest();
    job.request.rawPrompt = prompt;
    job.request.maxTokens = maxTokens;
    return runtime_.run(std::move(job), {{}, [done](const auto&) { *done = true; }});
  }
  void finish(const std::string& prompt) {
    bool done = false;
    const auto task = start(prompt, 1, &done);
    waitUntil([&] { return done; });
  }

  std::string model_;
  RecordingSystemLog log_;
  std::atomic<bool> waiting_ = false;
  std::atomic<int> chunks_ = 0;
  Clock::time_point resumed_;  // written before the next answer is posted
  LlamaRuntime runtime_;
};

void run(const char* model, const char* server) {
  QtMainLoop loop;
  QtHttpClient http;
  MemoryDefaultsStore defaults;
  Preferences prefs(defaults);
  Spread::printHead("after the task's end, ms until");
  measureConnections(loop, http, prefs);
  if (server) measureLlamaServer(loop, http, prefs, server, model);
  std::string prompt;
  while (prompt.size() < 5000)
    prompt += "Please send me the report for room " + std::to_string(prompt.size()) + ". ";
  BuiltInModel builtIn(loop, model);
  builtIn.measure("the built-in model is free, reading the prompt", prompt, 0,
                  std::chrono::microseconds(500));
  builtIn.measure("the built-in model is free, writing", "Once upon a time", 1500,
                  std::chrono::microseconds(500));
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  if (argc < 2) return std::fprintf(stderr, "usage: cancel_latency MODEL [LLAMA_SERVER]\n"), 2;
  const QCoreApplication application(argc, argv);
  nimbletype::run(argv[1], argc > 2 ? argv[2] : nullptr);
}
