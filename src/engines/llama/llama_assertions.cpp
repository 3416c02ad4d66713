#include "engines/llama/llama_assertions.h"

#include <ggml.h>

#include <cstdio>
#include <stdexcept>
#include <utility>

namespace nimbletype {
namespace {

thread_local LlamaAssertions* watching = nullptr;

}  // namespace

LlamaAssertions::LlamaAssertions() : outer_(std::exchange(watching, this)) {
  static const bool routed = (ggml_set_abort_callback(onAbort), true);
  static_cast<void>(routed);
}

LlamaAssertions::~LlamaAssertions() {
  watching = outer_;
}

// ggml aborts when this returns.
void LlamaAssertions::onAbort(const char* message) {
  if (!watching) {
    std::fprintf(stderr, "%s\n", message);
    return;
  }
  watching->failed_ = true;
  throw std::runtime_error(message);
}

}  // namespace nimbletype
