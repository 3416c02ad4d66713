#include "core/completion/asking/running_request.h"

#include <utility>

#include "core/completion/showing/suggestion.h"

namespace nimbletype {

void RunningRequest::start(const Question& question, const FieldSnapshot& snapshot, Grown grown,
                           Ended ended) {
  cancel();
  const auto& [provider, request, clean] = question;
  asked_.emplace(snapshot, clean);
  grown_ = std::move(grown);
  ended_ = std::move(ended);
  streaming_ = provider.streams();
  last_.prompt = provider.promptStyle() == PromptStyle::raw ? request.rawPrompt : request.prompt;
  generation_.start(
      provider, request, [this](const std::string& text) { grow(text); },
      [this](Generation::Outcome outcome) { finish(std::move(outcome)); });
}

void RunningRequest::cancel() {
  soon_.cancel();
  asked_.reset();
  generation_.cancel();
}

void RunningRequest::grow(const std::string& textSoFar) {
  if (!asked_) return;
  if (asked_->text.empty() && arrived_) arrived_();
  asked_->text = textSoFar;
  if (!std::exchange(asked_->drawingSoon, true)) soon_ = loop_.after(frame, [this] { tell(); });
}

void RunningRequest::tell() {
  asked_->drawingSoon = false;
  std::string words(completeWords(asked_->clean(asked_->text)));
  if (!words.empty()) grown_(written(*asked_, std::move(words)));
}

void RunningRequest::finish(Generation::Outcome outcome) {
  soon_.cancel();
  auto asked = std::exchange(asked_, std::nullopt);
  const auto ended = std::exchange(ended_, nullptr);
  if (!outcome.result) return ended(std::unexpected(outcome.result.error()));
  last_.latency = outcome.took;
  last_.output = outcome.result->text;
  last_.cost = outcome.result->cost;
  ended(written(*asked, asked->clean(outcome.result->text)));
}

RunningRequest::Written RunningRequest::written(Asked& asked, std::string text) const {
  const bool isFirst = !text.empty() && !std::exchange(asked.told, true);
  return {asked.snapshot, std::move(text), isFirst, generation_.took()};
}

}  // namespace nimbletype
