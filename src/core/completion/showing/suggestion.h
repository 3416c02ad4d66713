#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nimbletype {

// The continuation on screen. Counts are user-perceived characters of `text`.
struct Suggestion {
  std::string text;
  std::string anchorTail;    // the end of the text before the caret when the suggestion was made
  std::size_t consumed = 0;  // how many are in the field by now, typed or inserted
  std::size_t taken = 0;     // how many were accepted; ahead of `consumed` until the field shows them
  std::string fieldKey;

  std::size_t length() const;
  std::string_view after(std::size_t count) const;
  std::string_view remaining() const { return after(consumed); }
  // What an accept key takes from: accepted text that has not reached the field yet is not taken twice.
  std::string_view acceptable() const { return after(std::max(consumed, taken)); }
};

// A suggestion for a caret after `before`.
Suggestion makeSuggestion(std::string text, std::string_view before, std::string fieldKey);

// How many characters of the suggestion `before` shows as typed over it: the longest match wins; none when
// the text went another way. No-break spaces count as spaces.
std::optional<std::size_t> typedOver(const Suggestion& suggestion, std::string_view before);

// The part of a growing text that further text leaves as it is: without the last word, which may not be
// whole, and the whitespace before it.
std::string_view completeWords(std::string_view growing);

// The suggestion with a longer text, or another one where none of it has been taken or typed; none when
// `text` contradicts what has.
std::optional<Suggestion> continued(Suggestion suggestion, std::string text);

// The next piece that one press takes from `rest`: leading whitespace, then a word or a run of signs, then
// what the settings include.
std::string_view nextChunk(std::string_view rest, bool trailingSpace, bool trailingPunctuation);

}  // namespace nimbletype
