#pragma once
#include <optional>

#include "core/settings/preferences.h"
#include "input/field/field_snapshot.h"
#include "overlay/ghost/ghost_content.h"

namespace nimbletype {

// How many suggestions carry the key hint before the user is taken to know it.
inline constexpr int keyHintLimit = 5;

// The content for a text at the snapshot's caret; none when the application does not report the caret.
// `mainScreenHeight` is that of the screen whose origin is zero.
std::optional<GhostContent> ghostContent(const FieldSnapshot& snapshot, GhostContent::Kind kind,
                                         std::string text, const Preferences& prefs, double mainScreenHeight);

}  // namespace nimbletype
