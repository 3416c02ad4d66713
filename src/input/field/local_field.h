#pragma once
#include <optional>
#include <string>

#include "platform/accessibility/accessibility.h"
#include "platform/desktop/geometry.h"

namespace nimbletype {

// A text field in one of our own windows, as it is now.
struct LocalFieldState {
  std::u16string text;
  TextRange selection;
  std::optional<TopLeftRect> caretRect;  // Accessibility space
  std::optional<double> lineStartX;
  std::optional<TopLeftRect> frame;
  TextFont font;
  std::string windowTitle;
};

// What a window lends of its field. Main thread only.
class LocalField {
 public:
  virtual ~LocalField() = default;
  virtual LocalFieldState state() const = 0;
  // Replaces the selection and leaves the caret behind the new text.
  virtual void replaceSelection(const std::string& text) = 0;
  // Deletes user-perceived characters before the caret.
  virtual void deleteBackwards(int count) = 0;
};

}  // namespace nimbletype
