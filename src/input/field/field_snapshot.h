#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/desktop/geometry.h"

namespace nimbletype {

// One reading of the focused text field. A plain value: built whole, compared field by field, never changed.
// Text is UTF-8; rectangles are in the Accessibility space (points, top-left origin).
struct FieldSnapshot {
  std::string fieldKey{};
  std::string bundleID{};
  std::string appName{};
  std::string role{};
  std::string before{};  // at most the last 3000 characters before the selection
  std::string after{};   // at most 500 characters after the selection
  std::int64_t selectionLength = 0;
  std::optional<TopLeftRect> caretRect{};
  std::optional<double> lineStartX{};
  std::optional<TopLeftRect> fieldFrame{};
  std::optional<double> fontSize{};
  std::optional<std::string> fontName{};
  bool isSecure = false;
  std::optional<std::string> domain{};
  std::optional<std::string> windowTitle{};
  bool isLocal = false;

  // The part of `after` before its first line ending ("\n", "\r\n" or "\r").
  std::string_view restOfLine() const;
  // Nothing but whitespace follows the caret.
  bool isAtTextEnd() const;
  // The caret starts a new line and the line above ended in punctuation.
  bool followsFinishedLine() const;

  bool operator==(const FieldSnapshot&) const = default;
};

// Whether both show the same field with the same text and the same selection in it, wherever that stands.
bool holdsSameText(const FieldSnapshot& a, const FieldSnapshot& b);

}  // namespace nimbletype
