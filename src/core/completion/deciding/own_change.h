#pragma once
#include <string>

#include "input/field/field_snapshot.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The last insertion made by the program itself.
struct Injection {
  std::string fieldKey, text;
  MonotonicTime time;
};

// Whether a field change is the insertion showing up rather than the user's doing.
bool isOwnChange(const Injection& injection, const FieldSnapshot& snapshot, MonotonicTime now);

// Whether what stands after the caret is a part of the insertion: applications tell of text and caret one
// after the other while it arrives.
bool caretLagsBehind(const Injection& injection, const FieldSnapshot& snapshot, MonotonicTime now);

}  // namespace nimbletype
