#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "platform/drawing/font_metrics.h"

namespace nimbletype {

// The words of a text, each with the blanks that follow it; leading blanks belong to the first.
std::vector<std::string_view> ghostWords(std::string_view text);

// How many of the words, set one after the other from their common text, are at most `room` wide.
std::size_t wordsThatFit(std::string_view text, const std::vector<std::string_view>& words, double room,
                         const FontSpec& font, const FontMetrics& metrics);

// Text broken into rows at most `room` wide, without the blanks at their ends. A word wider than a row is
// broken between characters.
std::vector<std::string> breakIntoRows(std::string_view text, double room, const FontSpec& font,
                                       const FontMetrics& metrics);

// The row cut so far that it ends in "…" within the room.
std::string ellipsized(std::string_view row, double room, const FontSpec& font, const FontMetrics& metrics);

}  // namespace nimbletype
