#include "core/completion/own_change.h"

#include "text/text.h"

namespace nimbletype {

bool isOwnChange(const Injection& injection, const FieldSnapshot& snapshot, MonotonicTime now) {
  constexpr Milliseconds settling{400};
  if (now - injection.time < settling) return true;
  return snapshot.fieldKey == injection.fieldKey &&
         text::withPlainSpaces(snapshot.before).ends_with(text::withPlainSpaces(injection.text));
}

}  // namespace nimbletype
