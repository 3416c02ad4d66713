#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

#include "input/caret/caret_geometry.h"
#include "text/right_to_left.h"

namespace nimbletype {

// What has to be known of the text around a caret where not all of it runs from left to right.
struct LineAroundCaret {
  bool rightToLeft = false;  // the caret's paragraph runs so
  text::ParagraphTail tail;  // of what stands before the caret in it
  bool atEnd = false;        // nothing but blanks stands behind the caret

  // What follows such a caret stands at the right of the character before it.
  bool isPlain() const { return !rightToLeft && !tail.runsOtherWay; }
  // The boxes of both parts of the line are needed to tell where its end is.
  bool needsTail() const { return atEnd && tail.units > 0; }
};
LineAroundCaret lineAroundCaret(std::string_view before, std::string_view after);

// Boxes of the last character that runs the line's own way, and of all that follows it up to the caret.
struct LineEndBoxes {
  std::optional<TopLeftRect> lastOwn, tail;
};

// Where the caret stands in a line that is not plain: at its end where the application says, or else where
// the next word of the line's own direction will begin; elsewhere beside the character before it, for what is
// told of a place amid text is an edge of the character after it. None when the one before has no box.
std::optional<CaretPlace> caretInLine(const LineAroundCaret& line, const CaretBoxes& boxes,
                                      const LineEndBoxes& end);

}  // namespace nimbletype
