#include "core/completion/deciding/own_change.h"

#include "text/text.h"

namespace nimbletype {

namespace {

constexpr Milliseconds settling{400};

}  // namespace

bool isOwnChange(const Injection& injection, const FieldSnapshot& snapshot, MonotonicTime now) {
  if (now - injection.time < settling) return true;
  return snapshot.fieldKey == injection.fieldKey &&
         text::withPlainSpaces(snapshot.before).ends_with(text::withPlainSpaces(injection.text));
}

bool caretLagsBehind(const Injection& injection, const FieldSnapshot& snapshot, MonotonicTime now) {
  if (now - injection.time >= settling || snapshot.fieldKey != injection.fieldKey) return false;
  const std::string before = text::withPlainSpaces(snapshot.before);
  const std::string after = text::withPlainSpaces(snapshot.restOfLine());
  const std::string inserted = text::withPlainSpaces(injection.text);
  const std::string_view all(inserted);
  for (std::size_t shown = 0; !after.empty() && shown < all.size(); ++shown)
    if (before.ends_with(all.substr(0, shown)) && all.substr(shown).starts_with(after)) return true;
  return false;
}

}  // namespace nimbletype
