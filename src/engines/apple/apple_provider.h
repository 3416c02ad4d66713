#pragma once
#include "engines/provider/completion_provider.h"
#include "platform/on_device/on_device_model.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Writes with the operating system's own model.
class AppleIntelligenceProvider : public CompletionProvider {
 public:
  AppleIntelligenceProvider(OnDeviceModel& model, MainLoop& loop) : model_(model), loop_(loop) {}

  EngineKind kind() const override { return EngineKind::apple; }
  PromptStyle promptStyle() const override { return PromptStyle::instruct; }
  bool isReady() override { return model_.availability() == OnDeviceModel::Availability::available; }
  void warmUp(const std::string& instructions) override { model_.prewarm(instructions); }

  // A prompt the system refuses to continue gets an empty continuation.
  [[nodiscard]] Task complete(const CompletionRequest& request, PartialHandler grow,
                              ResultHandler done) override;
  [[nodiscard]] Task status(StatusHandler done) override;
  [[nodiscard]] Task alternatives(const CompletionRequest& request, int count, TextsHandler grow,
                                  AlternativesHandler done) override;

 private:
  OnDeviceModel& model_;
  MainLoop& loop_;
};

}  // namespace nimbletype
