#pragma once
#include <cstdint>
#include <string_view>

// Text that runs from right to left, as the Unicode bidirectional algorithm decides it for a paragraph.
namespace nimbletype::text {

// Whether the first character that has a direction of its own runs from right to left, and so the paragraph.
bool startsRightToLeft(std::string_view paragraph);

// Whether the last character does; one without a direction of its own as that before it.
bool endsRightToLeft(std::string_view s);

// What stands at the end of a paragraph behind its last character that runs the paragraph's own way.
struct ParagraphTail {
  std::int64_t units = 0;     // UTF-16
  bool runsOtherWay = false;  // some of it does; digits run left to right
};
ParagraphTail paragraphTail(std::string_view paragraph, bool rightToLeft);

}  // namespace nimbletype::text
