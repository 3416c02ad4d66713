#pragma once
#include <optional>
#include <string>

#include "core/settings/settings_types.h"
#include "input/field/field_snapshot.h"

namespace nimbletype {

// The field that stays quiet after Escape.
class EscapeSuppression {
 public:
  // The user pressed Escape in this field.
  void escaped(EscapeBehavior behavior, const FieldSnapshot& snapshot);
  // The field may be another one now, or have another text.
  void follow(const FieldSnapshot& snapshot);
  void clear() { fieldKey_.reset(); }
  bool holds(const FieldSnapshot& snapshot) const { return fieldKey_ == snapshot.fieldKey; }

 private:
  std::optional<std::string> fieldKey_;
  std::optional<std::string> before_;  // for this text alone; none: until focus moves
};

}  // namespace nimbletype
