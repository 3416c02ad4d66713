#include "core/completion/deciding/own_change.h"

#include "text/text.h"

namespace nimbletype {

bool isEcho(const Injection& injection, const FieldSnapshot& snapshot) {
  return snapshot.fieldKey == injection.fieldKey &&
         text::withPlainSpaces(snapshot.before).ends_with(text::withPlainSpaces(injection.text));
}

bool isArriving(const Injection& injection, const FieldSnapshot& snapshot) {
  if (snapshot.fieldKey != injection.fieldKey) return false;
  const std::string before = text::withPlainSpaces(snapshot.before);
  const std::string tail = text::withPlainSpaces(injection.anchorTail);
  std::string shown = tail + text::withPlainSpaces(injection.text);
  for (; shown.size() >= tail.size(); shown.pop_back()) {
    if (tail.empty() ? before == shown : before.ends_with(shown)) return true;
    if (shown.empty()) break;
  }
  return false;
}

bool caretLagsBehind(const Injection& injection, const FieldSnapshot& snapshot) {
  if (snapshot.fieldKey != injection.fieldKey) return false;
  const std::string before = text::withPlainSpaces(snapshot.before);
  const std::string after = text::withPlainSpaces(snapshot.restOfLine());
  const std::string inserted = text::withPlainSpaces(injection.text);
  const std::string_view all(inserted);
  for (std::size_t shown = 0; !after.empty() && shown < all.size(); ++shown)
    if (before.ends_with(all.substr(0, shown)) && all.substr(shown).starts_with(after)) return true;
  return false;
}

}  // namespace nimbletype
