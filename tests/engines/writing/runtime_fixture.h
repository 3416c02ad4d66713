#pragma once
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "engines/writing/llama_runtime.h"
#include "platform/scripted/system/recording_system_log.h"
#include "tools/stage/waiting_main_loop.h"

namespace nimbletype {

inline const std::string starterModel = "models/starter/starter-q8_0.gguf";

// A runtime on a loop that waits for what its thread posts.
class RuntimeFixture : public testing::Test {
 protected:
  LlamaRuntime& runtime() {
    if (!runtime_) runtime_.emplace(loop, log, options, hooks);
    return *runtime_;
  }

  // With the options as they are now.
  void restart() { runtime_.reset(); }

  static LlamaRuntime::Job job(std::string prompt, int maxTokens = 0, double temperature = 0) {
    LlamaRuntime::Job job;
    job.modelPath = starterModel;
    job.request.rawPrompt = std::move(prompt);
    job.request.maxTokens = maxTokens;
    job.request.temperature = temperature;
    return job;
  }

  LlamaRuntime::Result run(LlamaRuntime::Job job) {
    std::optional<LlamaRuntime::Result> result;
    const auto task = runtime().run(std::move(job), {{}, [&](auto answer) { result = std::move(answer); }});
    loop.runUntil([&] { return result.has_value(); });
    return std::move(*result);
  }

  WaitingMainLoop loop;
  RecordingSystemLog log;
  ModelOptions options;
  RuntimeHooks hooks;

 private:
  std::optional<LlamaRuntime> runtime_;
};

}  // namespace nimbletype
