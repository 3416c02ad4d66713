#pragma once
#include <deque>
#include <expected>
#include <memory>
#include <string>
#include <vector>

#include "platform/on_device/on_device_model.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Gives the answers it was told to give, one for each request.
class ScriptedOnDeviceModel final : public OnDeviceModel {
 public:
  using Result = std::expected<std::string, Failure>;
  struct Answer {
    Result result;
    Milliseconds delay{0};
  };

  explicit ScriptedOnDeviceModel(MainLoop& loop) : loop_(loop) {}

  Availability availability() const override { return state; }
  [[nodiscard]] Task respond(const Request& request, Handler done) override;
  void prewarm(const std::string& instructions) override { prewarmed.push_back(instructions); }

  // How many requests lost their task before the answer came.
  int cancelled() const { return *cancelled_; }

  void willSay(std::string text, Milliseconds delay = {}) { answers.push_back({std::move(text), delay}); }
  void willRefuse(Milliseconds delay = {});
  void willFail(std::string text, Milliseconds delay = {});

  Availability state = Availability::available;
  std::deque<Answer> answers;          // a request that finds none is never answered
  std::vector<Request> requests;       // in order
  std::vector<std::string> prewarmed;  // instructions

 private:
  MainLoop& loop_;
  std::shared_ptr<int> cancelled_ = std::make_shared<int>(0);  // tasks may outlive this object
};

}  // namespace nimbletype
