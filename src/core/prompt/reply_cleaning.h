#pragma once
#include <functional>
#include <string>
#include <string_view>

#include "core/prompt/prompt_style.h"

namespace nimbletype {

// Tells whether a word is spelled as its language spells it; empty when nothing can tell.
using KnownWord = std::function<bool(std::string_view)>;

// What a reply is cleaned against.
struct ReplyFrame {
  std::string_view before;  // the text before the caret
  int words = 0;            // the most words kept
  PromptStyle style = PromptStyle::raw;
  KnownWord knownWord;  // decides a missing space after a reply in the chat form
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
