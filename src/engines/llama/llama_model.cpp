#include "engines/llama/llama_model.h"

#include <ggml-backend.h>
#include <llama.h>

#include <algorithm>
#include <cassert>
#include <chrono>
#include <exception>
#include <mutex>

#include "engines/gguf/gguf_check.h"
#include "engines/llama/llama_assertions.h"
#include "engines/llama/llama_log.h"
#include "engines/llama/processor.h"

namespace nimbletype {
namespace {

using Clock = std::chrono::steady_clock;
using Reason = RuntimeFailure::Case;

constexpr std::uint32_t batchSize = 512;

void initialiseOnce() {
  static std::once_flag once;
  std::call_once(once, [] {
    routeLlamaLog();
    llama_backend_init();
    if (ggml_backend_dev_count() == 0) ggml_backend_load_all();
  });
}

// Functions of the processor backend that are found by name where it is a plug-in.
template <typename Function>
Function processorFunction(const char* name) {
  auto* device = ggml_backend_dev_by_type(GGML_BACKEND_DEVICE_TYPE_CPU);
  auto* backend = device ? ggml_backend_dev_backend_reg(device) : nullptr;
  return backend ? reinterpret_cast<Function>(ggml_backend_reg_get_proc_address(backend, name)) : nullptr;
}

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

}  // namespace

void LlamaModel::Free::operator()(llama_model* model) const {
  llama_model_free(model);
}
void LlamaModel::Free::operator()(llama_context* context) const {
  llama_free(context);
}
void LlamaModel::Free::operator()(ggml_threadpool* pool) const {
  processorFunction<decltype(&ggml_threadpool_free)>("ggml_threadpool_free")(pool);
}

LlamaModel::~LlamaModel() {
  if (context_) llama_detach_threadpool(context_.get());
}

std::expected<std::unique_ptr<LlamaModel>, RuntimeFailure> LlamaModel::load(
    const std::string& path, const ModelOptions& options, const std::atomic<bool>* unwanted) {
  assert(options.contextSize >= 0);
  const auto start = Clock::now();
  initialiseOnce();
  std::unique_ptr<LlamaModel> model(new LlamaModel(path, options, unwanted));
  const LlamaAssertions assertions;
  if (!model->openFile()) return std::unexpected(RuntimeFailure{Reason::modelNotLoaded});
  if (!model->openContext())
    return std::unexpected(RuntimeFailure{assertions.failed() ? Reason::modelNotLoaded : Reason::noContext});
  // Without a memory it is a model of another kind, one that classifies or embeds texts.
  if (!llama_get_memory(model->context_.get()))
    return std::unexpected(RuntimeFailure{Reason::modelNotLoaded});
  const auto warm = model->warmUp();
  if (assertions.failed()) return std::unexpected(RuntimeFailure{Reason::modelNotLoaded});
  if (!warm) return std::unexpected(warm.error());
  model->info_.milliseconds = millisecondsSince(start);
  return model;
}

bool LlamaModel::openFile() try {
  if (const auto fault = faultOfModelFile(path_)) {
    reportToLlamaLog("the model file can't be used: " + *fault);
    return false;
  }
  auto parameters = llama_model_default_params();
  parameters.progress_callback = [](float, void* self) {
    return !static_cast<const LlamaModel*>(self)->isUnwanted();
  };
  parameters.progress_callback_user_data = this;
  model_.reset(llama_model_load_from_file(path_.c_str(), parameters));
  if (!model_ || !llama_model_has_decoder(model_.get()) || llama_model_has_encoder(model_.get()))
    return false;
  const auto* vocab = llama_model_get_vocab(model_.get());
  if (llama_vocab_type(vocab) == LLAMA_VOCAB_TYPE_NONE) return false;
  vocabulary_ = std::make_unique<Vocabulary>(vocab);
  info_.parameters = llama_model_n_params(model_.get());
  info_.bytes = llama_model_size(model_.get());
  return true;
} catch (const std::exception&) {
  return false;
}

bool LlamaModel::openContext() try {
  auto parameters = llama_context_default_params();
  parameters.n_ctx = static_cast<std::uint32_t>(options_.contextSize);
  parameters.n_batch = parameters.n_ubatch = batchSize;
  parameters.swa_full = options_.fullWindowCache;
  parameters.abort_callback = &LlamaModel::shouldStop;
  parameters.abort_callback_data = this;
  const int threads =
      options_.threads > 0 ? options_.threads : threadsFor(readProcessorLayout(), info_.bytes);
  parameters.n_threads = parameters.n_threads_batch = options_.threads = threadsInUse_ = threads;
  context_.reset(llama_init_from_model(model_.get(), parameters));
  if (!context_) return false;
  attachThreads();
  sequence_ = std::make_unique<EvaluatedSequence>(context_.get(), vocabulary_->size(),
                                                  llama_model_n_swa(model_.get()));
  return true;
} catch (const std::exception&) {
  return false;
}

// Threads of our own live as long as the model. They wait actively for some milliseconds, which lasts from
// one token to the next, then sleep until the next evaluation.
void LlamaModel::attachThreads() {
  const auto make = processorFunction<decltype(&ggml_threadpool_new)>("ggml_threadpool_new");
  if (!make) return;
  auto parameters = ggml_threadpool_params_default(options_.threads);
  parameters.poll = 1;
  pool_.reset(make(&parameters));
  if (pool_) llama_attach_threadpool(context_.get(), pool_.get(), pool_.get());
}

void LlamaModel::adaptThreads(double busyShare) {
  const int threads = threadsAfter(busyShare, threadsInUse_, options_.threads);
  if (threads == threadsInUse_) return;
  threadsInUse_ = threads;
  llama_set_n_threads(context_.get(), threads, threads);
}

// The first evaluation touches every page of the weights; the user should not wait for that. It stays on this
// thread, where a failed assertion can be met.
std::expected<void, RuntimeFailure> LlamaModel::warmUp() {
  const Tokens twice(2, vocabulary_->neutralToken());
  llama_set_n_threads(context_.get(), 1, 1);
  const auto done = sequence_->append(twice, {});
  llama_set_n_threads(context_.get(), threadsInUse_, threadsInUse_);
  sequence_->clear();
  return done;
}

bool LlamaModel::shouldStop(void* self) {
  const auto& model = *static_cast<const LlamaModel*>(self);
  const auto* watch = model.watch_;
  if (!watch) return model.isUnwanted();
  if (watch->hooks && watch->hooks->insideEvaluation) watch->hooks->insideEvaluation();
  return watch->isStale();
}

}  // namespace nimbletype
