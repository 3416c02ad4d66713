#include "replay/desktop/scripted_provider.h"

#include <utility>

#include "core/completion/asking/generation.h"

namespace nimbletype {

void ReplyQueue::add(ScriptedReply reply) {
  replies_.push_back(std::move(reply));
  if (auto running = std::exchange(unanswered_, nullptr)) {
    running->lateReply = take();
    answer(running, *running->lateReply);
  }
}

std::optional<ScriptedReply> ReplyQueue::take() {
  if (replies_.empty()) return std::nullopt;
  ScriptedReply& next = replies_.front();
  ScriptedReply taken = next;
  taken.times = 1;
  if (next.times == 1)
    replies_.pop_front();
  else if (next.times > 1)
    --next.times;
  return taken;
}

Task ReplyQueue::request(Handler done) {
  auto running = std::make_shared<Running>();
  running->done = std::move(done);
  if (auto reply = take())
    answer(running, *reply);
  else
    unanswered_ = running;
  return Task([this, running] { cancelled(running); });
}

void ReplyQueue::answer(const std::shared_ptr<Running>& running, const ScriptedReply& reply) {
  running->timer = loop_.after(reply.after, [running, reply] {
    running->lateReply.reset();
    if (auto done = std::exchange(running->done, nullptr)) done(reply);
  });
}

void ReplyQueue::cancelled(const std::shared_ptr<Running>& running) {
  if (!std::exchange(running->done, nullptr)) return;
  running->timer.cancel();
  if (unanswered_ == running) unanswered_.reset();
  // A reply that came too late for a request is used up by it.
  auto reply = std::exchange(running->lateReply, std::nullopt);
  if (reply && reply->after < Generation::longest) replies_.push_front(*std::move(reply));
  output_.print("cancel", Json::object());
}

PromptStyle ScriptedProvider::promptStyle() const {
  return kind_ == EngineKind::apple ? PromptStyle::instruct : PromptStyle::raw;
}

void ScriptedProvider::print(const CompletionRequest& request) {
  output_.print("request", {{"engine", rawValue(kind_)},
                            {"model", request.model},
                            {"maxTokens", request.maxTokens},
                            {"temperature", request.temperature},
                            {"stop", request.stop},
                            {"healLast", request.healLast},
                            {"spaceTyped", request.spaceTyped},
                            {"instructions", request.instructions},
                            {"prompt", request.prompt},
                            {"rawPrompt", request.rawPrompt}});
}

Task ScriptedProvider::complete(const CompletionRequest& request, PartialHandler, ResultHandler done) {
  print(request);
  return replies_.request([done = std::move(done)](const ScriptedReply& reply) { done(reply.result); });
}

// A reply that has one text is one candidate.
Task ScriptedProvider::alternatives(const CompletionRequest& request, int, TextsHandler,
                                    AlternativesHandler done) {
  print(request);
  return replies_.request([done = std::move(done)](const ScriptedReply& reply) {
    if (!reply.result) return done(std::unexpected(reply.result.error()));
    done(reply.candidates.empty() ? std::vector{reply.result->text} : reply.candidates);
  });
}

Task ScriptedProvider::status(StatusHandler done) {
  done(status_.value_or(ProviderStatus::good("Ready")));
  return {};
}

}  // namespace nimbletype
