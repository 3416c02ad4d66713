#pragma once
#include <deque>
#include <memory>
#include <optional>

#include "engines/provider/completion_provider.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "replay/desktop/replay_output.h"

namespace nimbletype {

// An engine's answer, waiting for its request.
struct ScriptedReply {
  CompletionResult result;
  std::vector<std::string> candidates = {};  // for whoever asks for several
  Milliseconds after{50};
  std::int64_t times = 1;  // 0: for ever
};

// Answers requests from a queue. A request that finds the queue empty is answered by the next reply that is
// queued while it still runs; if it is cancelled before, that reply goes to the request after it.
class ReplyQueue {
 public:
  ReplyQueue(VirtualMainLoop& loop, ReplayOutput& output) : loop_(loop), output_(output) {}

  void add(ScriptedReply reply);
  using Handler = std::function<void(const ScriptedReply&)>;
  [[nodiscard]] Task request(Handler done);

 private:
  struct Running {
    Handler done;
    std::optional<ScriptedReply> lateReply;
    Task timer;
  };
  std::optional<ScriptedReply> take();
  void answer(const std::shared_ptr<Running>& running, const ScriptedReply& reply);
  void cancelled(const std::shared_ptr<Running>& running);

  VirtualMainLoop& loop_;
  ReplayOutput& output_;
  std::deque<ScriptedReply> replies_;
  std::shared_ptr<Running> unanswered_;
};

// One engine of the scripted desktop: prints what it is asked and answers from the queue.
class ScriptedProvider : public CompletionProvider {
 public:
  ScriptedProvider(EngineKind kind, ReplyQueue& replies, ReplayOutput& output,
                   const std::optional<ProviderStatus>& status)
      : kind_(kind), replies_(replies), output_(output), status_(status) {}

  EngineKind kind() const override { return kind_; }
  PromptStyle promptStyle() const override;
  bool heals() const override { return kind_ == EngineKind::builtIn; }
  Task complete(const CompletionRequest& request, PartialHandler grow, ResultHandler done) override;
  Task status(StatusHandler done) override;
  Task alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                    AlternativesHandler done) override;

 private:
  void print(const CompletionRequest& request);

  EngineKind kind_;
  ReplyQueue& replies_;
  ReplayOutput& output_;
  const std::optional<ProviderStatus>& status_;
};

}  // namespace nimbletype
