#pragma once
#include <atomic>
#include <cstdint>
#include <expected>
#include <memory>
#include <string>

#include "engines/llama/evaluated_sequence.h"
#include "engines/llama/job_watch.h"
#include "engines/llama/runtime_failure.h"
#include "engines/llama/vocabulary.h"

struct llama_context;
struct llama_model;
struct ggml_threadpool;

namespace nimbletype {

struct ModelOptions {
  std::int32_t contextSize = 2048;
  int threads = 0;  // 0: as many as suit the machine
  // Sliding-window layers keep the state of the whole context, so that evaluation can go back anywhere.
  bool fullWindowCache = true;
};

// What a load reports.
struct LoadInfo {
  std::uint64_t parameters = 0, bytes = 0;
  double milliseconds = 0;
};

// A loaded model, ready to evaluate: its file, its context and the threads it computes on. These sleep while
// nothing is evaluated.
class LlamaModel {
 public:
  // Gives up early, without a model, once it is said to be unwanted; that flag outlives the model.
  static std::expected<std::unique_ptr<LlamaModel>, RuntimeFailure> load(
      const std::string& path, const ModelOptions& options, const std::atomic<bool>* unwanted = nullptr);
  ~LlamaModel();
  LlamaModel(const LlamaModel&) = delete;
  LlamaModel& operator=(const LlamaModel&) = delete;

  const std::string& path() const { return path_; }
  const LoadInfo& info() const { return info_; }
  std::int32_t contextSize() const { return options_.contextSize; }
  const Vocabulary& vocabulary() const { return *vocabulary_; }
  EvaluatedSequence& sequence() { return *sequence_; }
  // Evaluation stops inside of a chunk once this job is stale. The watch must outlive the job.
  void watch(const JobWatch* watch) { watch_ = watch; }
  // Chooses the number of threads for the next job by how this one went.
  void adaptThreads(double busyShare);

 private:
  struct Free {
    void operator()(llama_model* model) const;
    void operator()(llama_context* context) const;
    void operator()(ggml_threadpool* pool) const;
  };
  LlamaModel(std::string path, const ModelOptions& options, const std::atomic<bool>* unwanted)
      : path_(std::move(path)), options_(options), unwanted_(unwanted) {}
  bool isUnwanted() const { return unwanted_ && *unwanted_; }
  bool openFile();
  bool openContext();
  std::expected<void, RuntimeFailure> warmUp();
  void attachThreads();
  static bool shouldStop(void* self);

  std::string path_;
  ModelOptions options_;
  const std::atomic<bool>* unwanted_;
  int threadsInUse_ = 0;
  LoadInfo info_;
  const JobWatch* watch_ = nullptr;
  std::unique_ptr<llama_model, Free> model_;
  std::unique_ptr<ggml_threadpool, Free> pool_;
  std::unique_ptr<llama_context, Free> context_;  // before the pool and the model that it uses
  std::unique_ptr<Vocabulary> vocabulary_;
  std::unique_ptr<EvaluatedSequence> sequence_;
};

}  // namespace nimbletype
