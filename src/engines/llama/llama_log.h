#pragma once
#include <functional>
#include <string>

namespace nimbletype {

// Sends what llama.cpp reports to the receiver instead of the standard error stream. Once per process.
void routeLlamaLog();

// Adds an error of our own about a model.
void reportToLlamaLog(const std::string& line);

// Receives the errors llama.cpp reports while this lives, on the thread they come up on. The latest one
// counts.
class LlamaLogReceiver {
 public:
  explicit LlamaLogReceiver(std::function<void(const std::string& line)> receive);
  ~LlamaLogReceiver();
  LlamaLogReceiver(const LlamaLogReceiver&) = delete;
  LlamaLogReceiver& operator=(const LlamaLogReceiver&) = delete;
};

}  // namespace nimbletype
