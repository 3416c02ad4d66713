#include "core/completion/asking/warm_up.h"

#include "core/prompt/prompt_builder.h"

namespace nimbletype {
namespace {

// An address is typed letter by letter; only the finished one is worth a request.
constexpr Milliseconds untilSettled{1000};

}  // namespace

WarmUp::WarmUp(MainLoop& loop, ProviderHub& hub, Preferences& prefs)
    : loop_(loop), hub_(hub), prefs_(prefs) {}

void WarmUp::engineChosen() {
  soon_ = loop_.after(untilSettled, [this] { now(); });
}

void WarmUp::now() {
  CompletionProvider* provider = hub_.writer(prefs_.engine.get());
  if (!provider) return;
  lastPrewarm_ = loop_.now();
  provider->warmUp(systemPrompt(wordBudget(prefs_.length.get())));
}

void WarmUp::fieldEntered(const std::string& fieldKey) {
  if (fieldKey == preparedFieldKey_) return;
  preparedFieldKey_ = fieldKey;
  if (lastPrewarm_ && loop_.now() - *lastPrewarm_ > kept) now();
}

}  // namespace nimbletype
