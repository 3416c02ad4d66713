#include "core/app/migration/earlier_values.h"

#include <algorithm>

#include "core/settings/preferences.h"
#include "personal/memory/sealed_box.h"

namespace nimbletype {

std::vector<std::pair<std::string, DefaultsValue>> settingsToTake(const DefaultsStore& earlier,
                                                                  DefaultsStore& ours) {
  const Preferences table(ours);
  const auto ourKeys = ours.keys();
  std::vector<std::pair<std::string, DefaultsValue>> taken;
  for (const auto& key : earlier.keys()) {
    const auto* setting = table.find(key);
    if (!setting || std::ranges::find(ourKeys, key) != ourKeys.end()) continue;
    if (auto value = earlier.get(key); value && setting->accepts(*value))
      taken.emplace_back(key, *std::move(value));
  }
  return taken;
}

MemoryMove memoryMove(const FoundSecret& earlierKey, const FoundSecret& ourKey) {
  if (!earlierKey) return MemoryMove::nothing;
  if (!*earlierKey || (*earlierKey)->size() != sealingKeySize) return MemoryMove::setAside;
  if (!ourKey) return MemoryMove::nothing;
  if (!*ourKey) return MemoryMove::keyThenFile;
  return **ourKey == **earlierKey ? MemoryMove::file : MemoryMove::setAside;
}

}  // namespace nimbletype
