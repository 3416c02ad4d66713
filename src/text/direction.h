#pragma once
#include <cstdint>
#include <string_view>

// Which way text runs, decided as the Unicode bidirectional algorithm decides it for a paragraph.
namespace nimbletype::text {

enum class Direction { leftToRight, rightToLeft };

// That of the first character that has one of its own; left to right where none has.
Direction baseDirection(std::string_view paragraph);

// What stands at the end of a paragraph behind its last character that runs the paragraph's own way.
struct DirectionTail {
  std::int64_t units = 0;     // UTF-16
  bool runsOtherWay = false;  // some of it does; digits run left to right
};
DirectionTail directionTail(std::string_view paragraph, Direction base);

// Whether the last character runs from right to left; one without a direction of its own as that before it.
bool endsRightToLeft(std::string_view s);

}  // namespace nimbletype::text
