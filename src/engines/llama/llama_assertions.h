#pragma once

namespace nimbletype {

// llama.cpp ends the process over some damaged models. While one of these lives, an assertion that fails on
// its thread is an exception instead, which llama.cpp's own loading and ours turn into a failure.
class LlamaAssertions {
 public:
  LlamaAssertions();
  ~LlamaAssertions();
  LlamaAssertions(const LlamaAssertions&) = delete;
  LlamaAssertions& operator=(const LlamaAssertions&) = delete;

  // Whether an assertion has failed.
  bool failed() const { return failed_; }

 private:
  static void onAbort(const char* message);

  LlamaAssertions* outer_;
  bool failed_ = false;
};

}  // namespace nimbletype
