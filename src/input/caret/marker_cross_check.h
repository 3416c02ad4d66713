#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

#include "input/caret/field_reading.h"

namespace nimbletype {

// The caret in `fieldText`, which begins where the field does, when text markers say that `markerText` stands
// before it. Line breaks count for nothing in the comparison, for markers tell of others than offsets do.
// None when the field does not begin like that.
std::optional<std::int64_t> caretAfter(std::string_view markerText, std::string_view fieldText);

// Compares the caret's offset with the text-marker selection, where a field has one; the offset that the
// markers mean when the two disagree. `before` is the text before the caret.
std::optional<std::int64_t> caretByMarkers(const AXElement& field, const FieldState& state,
                                           std::string_view before);

}  // namespace nimbletype
