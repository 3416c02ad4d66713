#include "core/completion/asking/generation.h"

#include <utility>

namespace nimbletype {

void Generation::start(CompletionProvider& provider, const CompletionRequest& request,
                       CompletionProvider::PartialHandler grown, Done done) {
  cancel();
  done_ = std::move(done);
  started_ = loop_.now();
  running_ = true;
  timer_ = loop_.after(longest, [this] {
    request_.cancel();
    finish(std::unexpected(ProviderError{"The model took too long to answer"}));
  });
  request_ = provider.complete(request, std::move(grown),
                               [this](CompletionResult result) { finish(std::move(result)); });
}

void Generation::cancel() {
  running_ = false;
  request_.cancel();
  timer_.cancel();
  done_ = nullptr;
}

Milliseconds Generation::took() const {
  return std::chrono::duration_cast<Milliseconds>(loop_.now() - started_);
}

void Generation::finish(CompletionResult result) {
  if (!std::exchange(running_, false)) return;
  const Milliseconds elapsed = took();
  auto done = std::exchange(done_, nullptr);
  timer_.cancel();
  done({std::move(result), elapsed});
}

}  // namespace nimbletype
