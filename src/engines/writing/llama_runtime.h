#pragma once
#include <atomic>
#include <condition_variable>
#include <deque>
#include <expected>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "engines/llama/job_watch.h"
#include "engines/llama/llama_log.h"
#include "engines/llama/llama_model.h"
#include "engines/llama/runtime_failure.h"
#include "engines/writing/text_generation.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"
#include "platform/system/task.h"

namespace nimbletype {

// Runs the built-in model on a thread of its own, one job after the other. The model stays loaded between
// jobs, and with it the state of the last prompt.
class LlamaRuntime {
 public:
  using LoadInfo = nimbletype::LoadInfo;
  using Output = GenerationOutput;
  using Failure = RuntimeFailure;
  using Result = std::expected<Output, Failure>;

  struct Job {
    std::string modelPath;
    CompletionRequest request;
    int candidates = 1;
    double confidence = 0;
    std::uint32_t seed = 0;
  };
  struct Handlers {
    std::function<void(const std::string& textSoFar)> grow;  // may be empty
    std::function<void(Result)> done;
  };

  LlamaRuntime(MainLoop& loop, SystemLog& log, ModelOptions options = {}, RuntimeHooks hooks = {});
  ~LlamaRuntime();
  LlamaRuntime(const LlamaRuntime&) = delete;
  LlamaRuntime& operator=(const LlamaRuntime&) = delete;

  // The handlers run on the main thread, and no more once the task is destroyed, which also stops the job.
  [[nodiscard]] Task run(Job job, Handlers handlers);
  // Only loads the model, after the jobs before it. Nobody hears how it went: the next job tells.
  [[nodiscard]] Task load(std::string path);
  // Stops the job that is running now; it reports `cancelled`.
  void cancel();

 private:
  struct Submission;

  Task submit(std::shared_ptr<Submission> submission);
  void work();
  std::shared_ptr<Submission> takeNext();
  void perform(const std::shared_ptr<Submission>& submission);
  Result evaluate(const std::shared_ptr<Submission>& submission, const JobWatch& watch);
  std::expected<void, Failure> makeReady(const std::string& path);
  void deliver(const std::shared_ptr<Submission>& submission, Result result);
  void report(std::string line);

  MainLoop& loop_;
  SystemLog& log_;
  const ModelOptions options_;
  const RuntimeHooks hooks_;
  LlamaLogReceiver llamaLog_;
  std::shared_ptr<GenerationCounter> counter_ = std::make_shared<GenerationCounter>();

  std::unique_ptr<LlamaModel> model_;  // touched by the worker alone

  std::atomic<bool> ending_{false};
  std::mutex mutex_;  // guards the queue, and the change of the flag above
  std::deque<std::shared_ptr<Submission>> queue_;
  std::condition_variable wake_;
  std::thread worker_;
};

}  // namespace nimbletype
