#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "input/caret/caret_geometry.h"
#include "input/field/ax_element.h"

namespace nimbletype {

// What an element says about itself before any of its text is read.
struct FieldState {
  std::string role;
  bool takesText = false;
  bool isSecure = false;
  std::optional<TopLeftRect> frame;
  std::optional<TextRange> selection;
  ObjectRef markerSelection;  // the same as text markers, where the field has them
  std::optional<std::int64_t> characterCount;
};

// With `keepOut` set (some application keeps the keyboard to itself) the field counts as secure, and not even
// the selection is asked for.
FieldState readFieldState(const AXElement& element, bool keepOut);

// The text around the selection of a field that is not secure, and what was told of the caret along with it.
struct FieldText {
  std::string before, after;
  CaretBoxes boxes;
  std::optional<double> lineStartX;
  TextFont font;
};

// Reads a field's text and its caret's surroundings in one round trip. The line start takes a second one when
// the caret has come to another paragraph since the last reading.
class FieldTextReader {
 public:
  // None when the field does not give the text that stands before its caret.
  std::optional<FieldText> read(const AXElement& element, const FieldState& state);

 private:
  struct Paragraph {
    AXElement element;
    std::int64_t start = 0;
  };
  bool isKnown(const AXElement& element) const { return paragraph_.element && paragraph_.element == element; }

  Paragraph paragraph_;  // of the reading before
};

}  // namespace nimbletype
