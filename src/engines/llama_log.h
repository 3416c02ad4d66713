#pragma once
#include <functional>
#include <string>

namespace nimbletype {

// Sends what llama.cpp reports to the receiver instead of the standard error stream. Once per process.
void routeLlamaLog();

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
