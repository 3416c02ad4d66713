#include "engines/writing/llama_runtime.h"

#include <atomic>
#include <utility>

#include "engines/llama/processor.h"

namespace nimbletype {

// A job on its way from the main thread to the worker and back. The handlers are the main thread's alone.
struct LlamaRuntime::Submission {
  Job job;
  Handlers handlers;
  bool grows = false, loadsOnly = false;
  std::atomic<std::int64_t> started{0};  // the counter's value for this job; 0 while it waits
  std::atomic<bool> cancelled{false};
  std::atomic<bool> growthPosted{false};

  void cancel(GenerationCounter& counter) {
    handlers = {};
    cancelled = true;
    if (const auto value = started.load(); value != 0) counter.incrementIf(value);
  }
};

LlamaRuntime::LlamaRuntime(MainLoop& loop, SystemLog& log, ModelOptions options, RuntimeHooks hooks)
    : loop_(loop),
      log_(log),
      options_(options),
      hooks_(std::move(hooks)),
      llamaLog_([this](const std::string& line) { report(line); }),
      worker_([this] { work(); }) {}

LlamaRuntime::~LlamaRuntime() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
    queue_.clear();
  }
  cancel();
  wake_.notify_one();
  worker_.join();
}

Task LlamaRuntime::run(Job job, Handlers handlers) {
  auto submission = std::make_shared<Submission>();
  submission->job = std::move(job);
  submission->grows = static_cast<bool>(handlers.grow);
  submission->handlers = std::move(handlers);
  return submit(std::move(submission));
}

Task LlamaRuntime::load(std::string path) {
  auto submission = std::make_shared<Submission>();
  submission->job.modelPath = std::move(path);
  submission->loadsOnly = true;
  return submit(std::move(submission));
}

Task LlamaRuntime::submit(std::shared_ptr<Submission> submission) {
  {
    const std::lock_guard lock(mutex_);
    queue_.push_back(submission);
  }
  wake_.notify_one();
  return Task([submission = std::move(submission), counter = counter_] { submission->cancel(*counter); });
}

void LlamaRuntime::cancel() {
  counter_->increment();
}

void LlamaRuntime::work() {
  beginModelThread();
  while (const auto submission = takeNext()) perform(submission);
  model_.reset();
}

std::shared_ptr<LlamaRuntime::Submission> LlamaRuntime::takeNext() {
  std::unique_lock lock(mutex_);
  wake_.wait(lock, [this] { return ending_ || !queue_.empty(); });
  if (ending_) return nullptr;
  auto next = std::move(queue_.front());
  queue_.pop_front();
  return next;
}

void LlamaRuntime::perform(const std::shared_ptr<Submission>& submission) {
  const JobWatch watch{counter_.get(), counter_->increment(), &hooks_};
  submission->started = watch.started;
  if (submission->cancelled) return;
  deliver(submission, evaluate(submission, watch));
}

LlamaRuntime::Result LlamaRuntime::evaluate(const std::shared_ptr<Submission>& submission,
                                            const JobWatch& watch) {
  const auto& job = submission->job;
  if (const auto ready = makeReady(job.modelPath); !ready) return std::unexpected(ready.error());
  if (submission->loadsOnly) return Output{};
  if (watch.isStale()) return std::unexpected(Failure{});
  GenerationOrder order{job.request, job.candidates, job.confidence, job.seed, {}};
  if (submission->grows) {
    order.grow = [this, submission](const std::string& text) {
      if (submission->growthPosted.exchange(true)) return;
      loop_.post([submission, text] {
        submission->growthPosted = false;
        if (submission->handlers.grow) submission->handlers.grow(text);
      });
    };
  }
  const BusyClock clock;
  model_->watch(&watch);
  auto result = generate(*model_, order, watch);
  model_->watch(nullptr);
  model_->adaptThreads(clock.share());
  return result;
}

std::expected<void, LlamaRuntime::Failure> LlamaRuntime::makeReady(const std::string& path) {
  if (model_ && model_->path() == path) return {};
  model_.reset();
  auto loaded = LlamaModel::load(path, options_, &ending_);
  if (!loaded) return std::unexpected(loaded.error());
  model_ = std::move(*loaded);
  const auto& info = model_->info();
  report("loaded a model of " + std::to_string(info.parameters) + " parameters, " +
         std::to_string(info.bytes) + " bytes, in " + std::to_string(static_cast<long>(info.milliseconds)) +
         " ms");
  return {};
}

void LlamaRuntime::deliver(const std::shared_ptr<Submission>& submission, Result result) {
  loop_.post([submission, result = std::move(result)]() mutable {
    const auto handlers = std::exchange(submission->handlers, {});
    if (handlers.done) handlers.done(std::move(result));
  });
}

void LlamaRuntime::report(std::string line) {
  loop_.post([&log = log_, line = std::move(line)] { log.log("model", line); });
}

}  // namespace nimbletype
