#include "core/completion/asking/request_maker.h"

#include "core/completion/asking/request_builder.h"
#include "text/text.h"

namespace nimbletype {

std::optional<Question> RequestMaker::question(const FieldSnapshot& snapshot, CompletionLength length) {
  CompletionProvider* provider = s_.hub.writer(s_.prefs.engine.get());
  if (!provider) return std::nullopt;
  const bool onBattery = s_.power.onBattery();
  const int words = wordBudget(lengthFor(length, onBattery, s_.prefs.batteryShorter.get()));
  auto context = std::make_shared<PromptContext>(allowedContext(context_.contextFor(snapshot), s_.prefs));
  context->examples = examples_.examples(snapshot);
  CompletionRequest request =
      makeRequest({*context, snapshot.before, window_.of(snapshot.before, snapshot.fieldKey), words,
                   s_.prefs.creativity.get(), modelFor(provider->kind(), s_.prefs, onBattery)});
  // Digits are no words to write again.
  const bool rewrites =
      provider->heals() && request.healLast && text::isLetter(text::lastCharacter(snapshot.before));
  ReplyCleaner clean({snapshot.before, snapshot.after, words, provider->promptStyle(), rewrites, context},
                     s_.typo);
  return Question{*provider, std::move(request), std::move(clean)};
}

}  // namespace nimbletype
