#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/accessibility/accessibility.h"

namespace nimbletype {

// How much text a snapshot holds on either side of the selection, in UTF-16 units.
inline constexpr std::int64_t mostBefore = 3000, mostAfter = 500;

// Applications answer with whatever number they like. A count of none when theirs makes no sense, and a
// selection that lies within the text as far as its length is known.
std::optional<std::int64_t> characterCount(std::optional<double> told);
TextRange validSelection(const TextRange& told, std::optional<std::int64_t> count);

// The ranges to read for a selection in a text of `count` units, when that is known. They reach a little
// further than a snapshot does, so that the cut can be moved to the border of a user-perceived character.
TextRange rangeBefore(const TextRange& selection);
TextRange rangeAfter(const TextRange& selection, std::optional<std::int64_t> count);

// The last or first whole characters that fit.
std::string endOfText(std::string_view text, std::int64_t units = mostBefore);
std::string startOfText(std::string_view text, std::int64_t units = mostAfter);

// Where the paragraph of the caret begins, given the text before the caret; none when it begins further back.
std::optional<std::int64_t> paragraphStart(std::string_view before, std::int64_t caret);

bool endsInLineBreak(std::string_view text);

}  // namespace nimbletype
