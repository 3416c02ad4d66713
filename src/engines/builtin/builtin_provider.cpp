#include "engines/builtin/builtin_provider.h"

#include <algorithm>
#include <utility>

#include "engines/provider/separate_completions.h"

namespace nimbletype {
namespace {

// Below this probability of its next token a suggestion ends: short and sure is better than long and
// doubtful.
constexpr double confidence = 0.15;

Completion completionOf(LlamaRuntime::Output output) {
  return {std::move(output.text),
          {output.promptTokens, output.reusedTokens, output.generatedTokens, output.promptMilliseconds,
           output.generationMilliseconds}};
}

std::vector<std::string> candidatesOf(LlamaRuntime::Output output) {
  output.alternatives.insert(output.alternatives.begin(), std::move(output.text));
  return distinctTexts(output.alternatives);
}

template <typename Function>
auto mapped(std::expected<LlamaRuntime::Output, ProviderError> result, Function function)
    -> std::expected<decltype(function(std::move(*result))), ProviderError> {
  if (!result) return std::unexpected(std::move(result.error()));
  return function(std::move(*result));
}

}  // namespace

BuiltInProvider::BuiltInProvider(MainLoop& loop, ModelLocator& locator, SystemLog& log,
                                 CompletionProvider* standIn)
    : loop_(loop), locator_(locator), standIn_(standIn), runtime_(loop, log) {}

// Loading is what takes time; the state of a prompt that was evaluated already stays as it is.
void BuiltInProvider::warmUp(const std::string&) {
  if (auto path = locator_.installedModel()) warming_ = runtime_.load(std::move(*path));
}

Task BuiltInProvider::complete(const CompletionRequest& request, PartialHandler grow, ResultHandler done) {
  return submit(request, 1, std::move(grow),
                [done = std::move(done)](auto result) { done(mapped(std::move(result), completionOf)); });
}

Task BuiltInProvider::prepare(const CompletionRequest& request, ResultHandler done) {
  auto evaluateOnly = request;
  evaluateOnly.maxTokens = 0;
  return complete(evaluateOnly, {}, std::move(done));
}

Task BuiltInProvider::alternatives(const CompletionRequest& request, int count, TextsHandler,
                                   AlternativesHandler done) {
  return submit(request, std::max(count, 2), {},
                [done = std::move(done)](auto result) { done(mapped(std::move(result), candidatesOf)); });
}

Task BuiltInProvider::submit(const CompletionRequest& request, int candidates, PartialHandler grow,
                             RuntimeHandler done) {
  auto path = locator_.installedModel();
  if (!path) {
    return loop_.after(Milliseconds(0), [done = std::move(done)] {
      done(std::unexpected(ProviderError{"Download the Nimbletype model in Settings first"}));
    });
  }
  auto finished = [done = std::move(done)](LlamaRuntime::Result result) {
    if (result)
      done(std::move(*result));
    else
      done(std::unexpected(ProviderError{result.error().message()}));
  };
  return runtime_.run({std::move(*path), request, candidates, confidence, 0},
                      {std::move(grow), std::move(finished)});
}

Task BuiltInProvider::status(StatusHandler done) {
  const auto answer = [this](StatusHandler handler, ProviderStatus status) {
    return loop_.after(Milliseconds(0),
                       [handler = std::move(handler), status = std::move(status)] { handler(status); });
  };
  const auto phase = locator_.phase().state;
  if (phase == ModelPhase::Case::downloading)
    return answer(std::move(done),
                  ProviderStatus::good("Downloading. Apple Intelligence fills in until it's done."));
  if (phase == ModelPhase::Case::checking)
    return answer(std::move(done), ProviderStatus::good("Checking the download."));
  if (isReady()) return answer(std::move(done), ProviderStatus::good("Downloaded"));
  const bool isUsable = standIn_ && standIn_->isReady();
  return answer(std::move(done),
                isUsable ? ProviderStatus::good("Apple Intelligence fills in until you download it.")
                         : ProviderStatus::problem("Download the model to start"));
}

}  // namespace nimbletype
