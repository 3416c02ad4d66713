#include "core/settings/preferences.h"

#include <algorithm>
#include <array>

namespace nimbletype {
namespace {

constexpr std::array<std::string_view, 6> survivingKeys{"onboardingDone", "keyHintsShown", "introSeen",
                                                        "introMuted",     migratedKey,     "AppleLanguages"};

}  // namespace

AnySetting* Preferences::find(std::string_view key) const {
  const auto found = std::ranges::find(settings(), key, &AnySetting::key);
  return found == settings().end() ? nullptr : *found;
}

void Preferences::reset() {
  for (const auto& key : store().keys())
    if (std::ranges::find(survivingKeys, key) == survivingKeys.end()) store().remove(key);
  // All are read before the first is set: observers may write settings of their own.
  const Preferences fresh(store());
  for (std::size_t i = 0; i < settings().size(); ++i) settings()[i]->assign(fresh.settings()[i]->stored());
}

}  // namespace nimbletype
