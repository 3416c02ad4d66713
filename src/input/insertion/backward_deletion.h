#pragma once
#include "platform/accessibility/accessibility.h"

namespace nimbletype {

// Deletes that many user-perceived characters before the caret through Accessibility, where that is the surer
// way: applications disagree on how much of a character that consists of several code points one press of
// Delete takes. False when the Delete key does as well, or the element does not let itself be changed; then
// nothing has been deleted.
bool deleteThroughAccessibility(Accessibility& accessibility, const ObjectRef& field, int count);

}  // namespace nimbletype
