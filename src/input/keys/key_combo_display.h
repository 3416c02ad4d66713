#pragma once
#include <expected>
#include <string>
#include <string_view>

#include "platform/keys/keys.h"

namespace nimbletype {

inline constexpr std::string_view recorderHint = "Press to record a new shortcut. Escape cancels.";

// The glyphs in the order menus show them: ⌃⌥⇧⌘.
std::string modifierGlyphs(ModifierSet modifiers);
// "Tab", "A", "←"; a key without a name is "Key " and its number.
std::string keyName(std::uint16_t keyCode);
// "⌃⌥Space"
std::string displayName(const KeyCombo& combo);
// Whether the combo may become a global command; else the sentence that tells the user why not.
std::expected<void, std::string> checkRecordable(const KeyCombo& combo);

}  // namespace nimbletype
