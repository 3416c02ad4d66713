#pragma once
#include <cstddef>
#include <optional>
#include <string>

#include "input/field/field_snapshot.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Text that the program itself has put into a field.
struct Injection {
  // So long after it, changes are taken for its doing, or for the application's answer to it.
  static constexpr Milliseconds settling{400};

  std::string fieldKey;
  std::string anchorTail;  // the end of the text before it
  std::string text;
  MonotonicTime time;
};

// Whether all of the insertion stands before the caret now.
bool isEcho(const Injection& injection, const FieldSnapshot& snapshot);

// Whether the field shows the insertion, or a part of it, and nothing else that is new.
bool isArriving(const Injection& injection, const FieldSnapshot& snapshot);

// Whether what stands after the caret is a part of the insertion: applications tell of text and caret one
// after the other while it arrives.
bool caretLagsBehind(const Injection& injection, const FieldSnapshot& snapshot);

}  // namespace nimbletype
