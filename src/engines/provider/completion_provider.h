#pragma once
#include <expected>
#include <functional>
#include <string>
#include <vector>

#include "core/prompt/prompt_style.h"
#include "core/settings/settings_types.h"
#include "engines/provider/completion_request.h"
#include "platform/system/task.h"

namespace nimbletype {

// An engine's failure, as one finished sentence for the user.
struct ProviderError {
  std::string message;
  bool operator==(const ProviderError&) const = default;
};

// An engine's state as the menu and the settings show it.
struct ProviderStatus {
  enum class Case { good, problem, notChecked, checking };
  Case state = Case::notChecked;
  std::string text;  // of `good` and `problem`
  static ProviderStatus good(std::string text) { return {Case::good, std::move(text)}; }
  static ProviderStatus problem(std::string text) { return {Case::problem, std::move(text)}; }
  bool isProblem() const { return state == Case::problem; }
  // What to show: the text, or a sentence for the two cases without one.
  std::string label() const;
  bool operator==(const ProviderStatus&) const = default;
};

// What one generation cost, where the engine tells.
struct CompletionCost {
  std::int64_t promptTokens = 0, reusedTokens = 0, generatedTokens = 0;
  double promptMilliseconds = 0, generationMilliseconds = 0;
};

// A raw continuation, not yet cleaned.
struct Completion {
  std::string text;
  CompletionCost cost;
};

using CompletionResult = std::expected<Completion, ProviderError>;

// One of the engines that write suggestions. Called on the main thread, answers there in a later turn.
// Destroying the returned task cancels the work; no handler is called afterwards. Nothing is retried.
class CompletionProvider {
 public:
  using ResultHandler = std::function<void(CompletionResult)>;
  using PartialHandler = std::function<void(const std::string& textSoFar)>;  // may be empty
  using StatusHandler = std::function<void(ProviderStatus)>;
  using AlternativesHandler = std::function<void(std::expected<std::vector<std::string>, ProviderError>)>;
  using ModelsHandler = AlternativesHandler;

  virtual ~CompletionProvider() = default;
  virtual EngineKind kind() const = 0;
  virtual PromptStyle promptStyle() const = 0;
  // Whether `grow` is called while the text is being written.
  virtual bool streams() const { return false; }
  // Whether it writes an unfinished word again from its start, as `healLast` asks.
  virtual bool heals() const { return false; }
  // False when a request is known to fail, because what the engine needs is not there. Asked at every
  // request.
  virtual bool isReady() { return true; }
  // Brings the engine into memory before it is needed. Nobody waits for it, and failures show up in `status`.
  virtual void warmUp(const std::string& instructions);

  [[nodiscard]] virtual Task complete(const CompletionRequest& request, PartialHandler grow,
                                      ResultHandler done) = 0;
  [[nodiscard]] virtual Task status(StatusHandler done) = 0;
  // The operations below have a default, for engines without them, which answers before it returns.
  // Model names a server offers; empty for engines with a model of their own.
  [[nodiscard]] virtual Task models(ModelsHandler done);
  // Evaluates the prompt without writing anything, so that the completion that follows starts at once.
  // Engines that cannot do so answer with an empty completion.
  [[nodiscard]] virtual Task prepare(const CompletionRequest& request, ResultHandler done);
  // Several different continuations; empty for engines that write only one. Engines that write them one after
  // the other call `grow`, which may be empty, with those there are so far.
  using TextsHandler = std::function<void(const std::vector<std::string>& textsSoFar)>;
  [[nodiscard]] virtual Task alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                                          AlternativesHandler done);
};

}  // namespace nimbletype
