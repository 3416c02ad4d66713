#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nimbletype {

// Other ways to go on, as they are offered.
struct AlternativesModel {
  std::vector<std::string> items;  // the continuations, in the engine's order
  std::size_t selected = 0;
  std::string anchorBefore;         // the text before the caret when they were asked for
  std::string wordPrefix;           // what of the current word stands before the caret; empty after a blank
  std::optional<std::string> hint;  // a line under the rows
  bool operator==(const AlternativesModel&) const = default;
};

// The letters, digits and marks of words at the end of a text.
std::string_view wordPrefixOf(std::string_view before);

// What a row shows: the whole word where the continuation completes one.
std::string rowText(std::string_view continuation, std::string_view wordPrefix);

// What choosing a row does to the field: the text takes the place of what stands before the caret, with which
// it begins.
struct AlternativeChoice {
  std::string replaced, text;
  bool operator==(const AlternativeChoice&) const = default;
};
AlternativeChoice choiceOf(std::string_view continuation, std::string_view wordPrefix);

// The continuations that say something different from all before them; case, blanks and the mark at the end
// make no difference.
std::vector<std::string> differentOnes(const std::vector<std::string>& continuations);

}  // namespace nimbletype
