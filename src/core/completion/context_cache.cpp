#include "core/completion/context_cache.h"

namespace nimbletype {

const PromptContext& ContextCache::contextFor(const FieldSnapshot& snapshot) {
  const MonotonicTime now = loop_.now();
  const bool stale = !context_ || snapshot.fieldKey != fieldKey_ || now - lastUse_ >= pause;
  if (stale) {
    context_ = source_.gather(snapshot);
    fieldKey_ = snapshot.fieldKey;
  }
  lastUse_ = now;
  return *context_;
}

}  // namespace nimbletype
