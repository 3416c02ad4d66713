#pragma once
#include <expected>
#include <functional>
#include <string>

#include "platform/system/task.h"

namespace nimbletype {

// The operating system's own language model.
class OnDeviceModel {
 public:
  enum class Availability { available, deviceNotEligible, notEnabled, modelNotReady, unavailable };
  struct Request {
    std::string instructions, prompt;
    double temperature = 0;
    int maxTokens = 0;
  };
  struct Failure {
    bool refused = false;  // the system's guardrails forbade the answer
    std::string text;      // the system's own description of any other error
  };
  using Handler = std::function<void(std::expected<std::string, Failure>)>;

  virtual ~OnDeviceModel() = default;
  // Quick enough to be asked at every key press.
  virtual Availability availability() const = 0;
  // `done` runs on the main thread in a later turn; destroying the task cancels the generation. Each request
  // has a session of its own, so nothing of one field reaches another.
  [[nodiscard]] virtual Task respond(const Request& request, Handler done) = 0;
  // Loads what a request with these instructions will need. Nobody waits for it.
  virtual void prewarm(const std::string& instructions) = 0;
};

}  // namespace nimbletype
