#pragma once
#include <string>
#include <string_view>

#include "core/prompt/reply_cleaning.h"

namespace nimbletype {

// Makes a reply start exactly at the caret: typed text that it repeats is removed, an unfinished word that it
// begins anew is continued, and there is one blank at the joint where one belongs. A suggestion is one line.
std::string joinedAtCaret(std::string_view reply, const ReplyFrame& frame);

// How many bytes at the start of `reply` repeat the end of `before`.
std::size_t repeatedTail(std::string_view before, std::string_view reply);

}  // namespace nimbletype
