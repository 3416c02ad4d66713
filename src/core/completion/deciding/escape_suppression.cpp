#include "core/completion/deciding/escape_suppression.h"

namespace nimbletype {

void EscapeSuppression::escaped(EscapeBehavior behavior, const FieldSnapshot& snapshot) {
  if (behavior == EscapeBehavior::passThrough) return;
  fieldKey_ = snapshot.fieldKey;
  before_.reset();
  if (behavior == EscapeBehavior::dismiss) before_ = snapshot.before;
}

// Back in the field, the text for which it was quiet may still stand there.
void EscapeSuppression::follow(const FieldSnapshot& snapshot) {
  if (!fieldKey_) return;
  const bool sameField = *fieldKey_ == snapshot.fieldKey;
  const bool ends = before_ ? sameField && *before_ != snapshot.before : !sameField;
  if (ends) clear();
}

}  // namespace nimbletype
