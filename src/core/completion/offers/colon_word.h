#pragma once
#include <optional>
#include <string_view>

namespace nimbletype {

// A colon and what has been typed of a word after it, at the end of a text. The views are parts of that text.
struct ColonWord {
  std::string_view text;  // all of it, colons included
  std::string_view word;  // empty after a colon alone
  bool closed = false;    // a second colon ends it
  bool operator==(const ColonWord&) const = default;
};

// The colon word before the caret. Only a colon at the start of a line, after a blank, an opening bracket or
// another emoji begins one, so that "Note:", "10:30" and "http:" do not.
std::optional<ColonWord> colonWord(std::string_view before);

// The characters before the caret that could be an emoticon: all since the last blank. None when there are
// more of them than any emoticon has.
std::optional<std::string_view> emoticonCandidate(std::string_view before);

}  // namespace nimbletype
