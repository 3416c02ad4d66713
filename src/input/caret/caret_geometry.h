#pragma once
#include <optional>

#include "platform/desktop/geometry.h"

namespace nimbletype {

// The boxes an application gives for the text around the caret, as far as it gives any.
struct CaretBoxes {
  std::optional<TopLeftRect> emptyRange;         // of no characters, at the caret
  std::optional<TopLeftRect> previousCharacter;  // the one before the caret
  std::optional<TopLeftRect> nextCharacter;      // the one after the caret
};

struct CaretPlace {
  TopLeftRect rect;  // one point wide, as high as the line
  std::optional<double> lineStartX;
  bool operator==(const CaretPlace&) const = default;
};

bool isFinite(const TopLeftRect& rect);

// Where the caret stands according to the boxes of single characters; none when they do not tell. After a
// line break the character before the caret belongs to the line above and says nothing about the caret.
std::optional<CaretPlace> caretFromCharacters(const CaretBoxes& boxes, bool followsLineBreak);

}  // namespace nimbletype
