#pragma once
#include <functional>

#include "engines/provider/completion_provider.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// One request to an engine, raced against the time an answer may take. Starting another or destroying it
// cancels the request, and nothing is reported any more.
class Generation {
 public:
  static constexpr Milliseconds longest{8000};

  struct Outcome {
    CompletionResult result;
    Milliseconds took{0};
  };
  using Done = std::function<void(Outcome)>;

  explicit Generation(MainLoop& loop) : loop_(loop) {}
  // `grown` is called with the text so far by engines that write before one's eyes.
  void start(CompletionProvider& provider, const CompletionRequest& request,
             CompletionProvider::PartialHandler grown, Done done);
  void cancel();
  bool isRunning() const { return running_; }
  // How long ago the latest request was made.
  Milliseconds took() const;

 private:
  void finish(CompletionResult result);

  MainLoop& loop_;
  Task request_, timer_;
  Done done_;
  MonotonicTime started_;
  bool running_ = false;
};

}  // namespace nimbletype
