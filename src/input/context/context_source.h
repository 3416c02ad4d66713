#pragma once
#include "core/prompt/prompt_context.h"
#include "input/field/field_snapshot.h"

namespace nimbletype {

// Gathers what surrounds the field being written in. Answers from what is known already and waits for
// nothing.
class ContextSource {
 public:
  virtual ~ContextSource() = default;
  virtual PromptContext gather(const FieldSnapshot& snapshot) = 0;
  // The user went to another field, window or application: what is there may be asked for soon.
  virtual void focusMoved() {}
};

}  // namespace nimbletype
