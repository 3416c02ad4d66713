#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/screen_reader.h"

namespace nimbletype {

// One line of gathered text: blanks collapsed, without characters that show nothing or stand in for an
// object.
std::string cleanLine(std::string_view line);

// Too little to tell anything: a single word, a time of day, a row of signs.
bool isFragment(std::string_view cleanedLine);

// The lines of all pieces, each with its own place: cleaned, without fragments, in reading order. A line that
// is part of another one is there once.
std::vector<PlacedText> contextLines(std::span<const PlacedText> pieces);

// Without what the user is writing: lines that are part of the field's text, or repeat a part of it.
std::vector<PlacedText> withoutOwnText(std::vector<PlacedText> lines, std::string_view fieldText);

// What was copied, fit for a prompt; empty when it is of no use or already pasted.
std::string usefulCopy(std::string_view copied, std::string_view fieldText, std::size_t limit);

}  // namespace nimbletype
