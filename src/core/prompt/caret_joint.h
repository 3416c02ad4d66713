#pragma once
#include <string>
#include <string_view>

#include "core/prompt/reply_cleaning.h"

namespace nimbletype {

// Makes a reply start exactly at the caret: typed text that it repeats is removed, an unfinished word that it
// begins anew is continued, and there is one blank at the joint where one belongs. `lostLabel`: a blank may
// have gone with the label before the reply. A suggestion is one line.
std::string joinedAtCaret(std::string_view reply, const ReplyFrame& frame, bool lostLabel);

// The run of letters, digits and apostrophes at the end of a text: a word that may still grow.
std::string_view unfinishedWord(std::string_view before);

// How many bytes at the start of `reply` repeat the end of `before`, where they are more than `ignored`.
std::size_t repeatedTail(std::string_view before, std::string_view reply, std::size_t ignored = 0);

}  // namespace nimbletype
