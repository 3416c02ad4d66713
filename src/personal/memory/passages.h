#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "platform/system/main_loop.h"

namespace nimbletype {

// The words that tell what a text is about, each once, in ascending order and by their hashes: two thousand
// passages are compared while somebody types.
using Keywords = std::vector<std::size_t>;

// One passage of the user's own writing.
struct MemoryEntry {
  std::string id;  // made anew whenever it is loaded
  std::string appKey;
  std::string text;
  WallTime date;      // when it was taken, or grew
  Keywords keywords;  // of the text
  std::string rest;   // what else its file knew of it: members of a JSON object, or nothing
  bool operator==(const MemoryEntry&) const = default;
};

// Oldest first.
using MemoryEntries = std::vector<MemoryEntry>;

inline constexpr std::size_t passageLimit = 400, shortestPassage = 24, mostPassages = 2000;  // characters
inline constexpr std::size_t shownPassage = 220;

// The end of a field's text: whole when it is short, else from the start of a sentence where one comes soon.
std::string clippedPassage(std::string_view text);

// Words longer than three characters, in lower case. Where a script puts no blanks between words most of them
// have two characters, and those with one are left out.
Keywords keywordsOf(std::string_view text);

MemoryEntry newEntry(std::string text, std::string appKey, WallTime date);

// Lets the newest entry grow when this one goes on with it, or is what is left of it; else appends it and
// drops the oldest ones beyond the limit.
void keep(MemoryEntries& entries, MemoryEntry taken);

// The ends of the passages that fit the context best, best first; the newer one of two that fit alike.
std::vector<std::string> chosenPassages(const MemoryEntries& entries, std::string_view context,
                                        std::string_view appKey, int limit);

}  // namespace nimbletype
