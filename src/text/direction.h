#pragma once
#include <optional>
#include <string_view>

// The direction of text on a line, by the Unicode bidirectional algorithm.
namespace nimbletype::text {

enum class Direction { leftToRight, rightToLeft };

// That of the first letter; none for text without letters.
std::optional<Direction> firstStrongDirection(std::string_view s);

// The end of a line that stands against the line's own direction: what follows it logically is drawn at its
// far side. Empty where the line ends in its own direction. Part of the argument.
std::string_view counterflow(std::string_view line, Direction base);

}  // namespace nimbletype::text
