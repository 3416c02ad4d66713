#pragma once
#include <memory>
#include <string>

#include "core/prompt/prompt_context.h"
#include "core/prompt/prompt_style.h"
#include "input/field/field_snapshot.h"
#include "input/monitors/typo_checker.h"

namespace nimbletype {

// Makes the replies to one request continuations that start exactly at its caret. The typo checker must
// outlive it.
class ReplyCleaner {
 public:
  struct Frame {
    std::string before, after;  // the text around the caret
    int words = 0;              // the most words kept
    PromptStyle style = PromptStyle::raw;
    bool rewritesWord = false;  // the engine was asked to write the unfinished word again
    std::shared_ptr<const PromptContext> context;
  };

  ReplyCleaner(Frame frame, TypoChecker& typo) : frame_(std::move(frame)), typo_(&typo) {}
  // Empty for what is not to be shown.
  std::string operator()(const std::string& reply) const;

 private:
  bool isSeen(std::string_view word) const;

  Frame frame_;
  TypoChecker* typo_;
};

}  // namespace nimbletype
