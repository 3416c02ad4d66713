#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "input/caret/caret_geometry.h"
#include "input/field/ax_element.h"

namespace nimbletype {

// The boxes a field gives through text markers, as far as it gives any.
struct MarkerBoxes {
  std::optional<TopLeftRect> selection;
  std::optional<TopLeftRect> previousCharacter;  // the one before the caret
  std::optional<TopLeftRect> line;               // the caret's line
};

// The same without the boxes that are too large, or too small, for what they are said to be.
MarkerBoxes plausible(const MarkerBoxes& boxes);

// A piece of visible text, as one element of a page shows it, and its frame on screen.
struct TextRun {
  std::string text;
  TopLeftRect frame;
};
// Where the caret stands in the run, after this beginning of its text; none when the run lies on several
// lines or does not begin like that.
std::optional<CaretPlace> caretInRun(const TextRun& run, std::string_view upToCaret);

// The caret of a line without a box of its own, directly under the line above.
std::optional<CaretPlace> caretUnder(const std::optional<TopLeftRect>& lineAbove);

// What the text markers told of the caret. Web content answers through them where it knows no character
// offsets.
struct MarkerCaret {
  std::optional<CaretPlace> place;
  std::string diagnosis;  // what found the caret, or what is missing; holds none of the user's text
};
// `selection` is what "AXSelectedTextMarkerRange" of the field says.
MarkerCaret caretThroughTextMarkers(const AXElement& field, const ObjectRef& selection,
                                    bool followsLineBreak);

}  // namespace nimbletype
