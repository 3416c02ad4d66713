#include "engines/llama/llama_log.h"

#include <llama.h>

#include <mutex>
#include <utility>

namespace nimbletype {
namespace {

// llama.cpp has one log for the whole process, written from any thread.
struct Route {
  std::mutex mutex;
  const LlamaLogReceiver* owner = nullptr;
  std::function<void(const std::string&)> receive;
};

Route& route() {
  static Route route;
  return route;
}

void onLog(ggml_log_level level, const char* text, void*) {
  if (level != GGML_LOG_LEVEL_ERROR || !text) return;
  std::string line(text);
  while (line.ends_with('\n')) line.pop_back();
  reportToLlamaLog(line);
}

}  // namespace

void reportToLlamaLog(const std::string& line) {
  const std::lock_guard lock(route().mutex);
  if (route().receive) route().receive(line);
}

void routeLlamaLog() {
  llama_log_set(onLog, nullptr);
}

LlamaLogReceiver::LlamaLogReceiver(std::function<void(const std::string& line)> receive) {
  const std::lock_guard lock(route().mutex);
  route().owner = this;
  route().receive = std::move(receive);
}

LlamaLogReceiver::~LlamaLogReceiver() {
  const std::lock_guard lock(route().mutex);
  if (route().owner != this) return;
  route().owner = nullptr;
  route().receive = nullptr;
}

}  // namespace nimbletype
