#pragma once
#include <functional>
#include <string>
#include <string_view>

#include "core/prompt/prompt_style.h"

namespace nimbletype {

// Tells something about a word; empty when nothing can tell.
using WordTest = std::function<bool(std::string_view)>;

// What a reply is cleaned against.
struct ReplyFrame {
  std::string_view before;  // the text before the caret
  int words = 0;            // the most words kept
  PromptStyle style = PromptStyle::raw;
  // The engine was asked to write the unfinished word again from its start.
  bool rewritesWord = false;
  // These tell a finished word from a half one, where a reply may have lost the blank it begins with.
  WordTest isSpelled{};       // as its language spells it
  bool hasDictionary = true;  // else `isSpelled` has nothing against any word but a few
  WordTest isSeen{};          // stands in the field or around it as a word of its own
};

// A reply as a continuation that starts exactly at the caret; empty when there is nothing to show.
std::string cleanReply(std::string_view reply, const ReplyFrame& frame);

// The steps, in the order they are taken.
std::string withoutReasoning(std::string_view reply);
std::string_view cutAtEchoedLabel(std::string_view reply);
std::string_view withoutLeadingLabel(std::string_view reply);
std::string_view withoutFences(std::string_view reply);
std::string_view withoutQuotePair(std::string_view reply);
bool isRefusal(std::string_view reply);
std::string withSingleBlanks(std::string_view reply);

}  // namespace nimbletype
