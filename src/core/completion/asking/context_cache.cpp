#include "core/completion/asking/context_cache.h"

namespace nimbletype {

const PromptContext& ContextCache::contextFor(const FieldSnapshot& snapshot) {
  const MonotonicTime now = loop_.now();
  Place place{snapshot.fieldKey, snapshot.bundleID, snapshot.appName, snapshot.windowTitle, snapshot.domain};
  const bool stale = !context_ || place != place_ || now - lastUse_ >= pause;
  if (stale) {
    context_ = source_.gather(snapshot);
    place_ = std::move(place);
  }
  lastUse_ = now;
  return *context_;
}

}  // namespace nimbletype
