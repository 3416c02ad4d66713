#pragma once
#include "engines/provider/completion_provider.h"
#include "engines/store/model_locator.h"
#include "engines/writing/llama_runtime.h"

namespace nimbletype {

// The engine that needs no other program and no network: a model file, evaluated in this process.
class BuiltInProvider : public CompletionProvider {
 public:
  // `standIn` writes while the model is not there, and must outlive this; none when nothing does.
  BuiltInProvider(MainLoop& loop, ModelLocator& locator, SystemLog& log,
                  CompletionProvider* standIn = nullptr);

  EngineKind kind() const override { return EngineKind::builtIn; }
  PromptStyle promptStyle() const override { return PromptStyle::raw; }
  bool streams() const override { return true; }
  bool heals() const override { return true; }
  bool isReady() override { return locator_.installedModel().has_value(); }
  void warmUp(const std::string& instructions) override;

  [[nodiscard]] Task complete(const CompletionRequest& request, PartialHandler grow,
                              ResultHandler done) override;
  [[nodiscard]] Task status(StatusHandler done) override;
  [[nodiscard]] Task prepare(const CompletionRequest& request, ResultHandler done) override;
  [[nodiscard]] Task alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                                  AlternativesHandler done) override;

 private:
  using RuntimeHandler = std::function<void(std::expected<LlamaRuntime::Output, ProviderError>)>;
  Task submit(const CompletionRequest& request, int candidates, PartialHandler grow, RuntimeHandler done);

  MainLoop& loop_;
  ModelLocator& locator_;
  CompletionProvider* standIn_;
  LlamaRuntime runtime_;
  Task warming_;
};

}  // namespace nimbletype
