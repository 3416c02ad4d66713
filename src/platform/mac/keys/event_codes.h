#pragma once
#import <CoreGraphics/CoreGraphics.h>

#include <cstdint>

#include "platform/keys/keys.h"

namespace nimbletype {

// Marks the events that this process posts, in their source user data: "PLUM".
inline constexpr std::int64_t ownEventMarker = 0x504C554D;

struct ModifierFlag {
  std::uint8_t bit;
  CGEventFlags flag;
};
inline constexpr ModifierFlag modifierFlags[] = {{ModifierSet::command, kCGEventFlagMaskCommand},
                                                 {ModifierSet::option, kCGEventFlagMaskAlternate},
                                                 {ModifierSet::control, kCGEventFlagMaskControl},
                                                 {ModifierSet::shift, kCGEventFlagMaskShift}};

// Flags without a bit of their own (Caps Lock, Fn, the side a key is on) are dropped.
constexpr ModifierSet modifiersOf(CGEventFlags flags) {
  ModifierSet modifiers;
  for (const auto& [bit, flag] : modifierFlags)
    if (flags & flag) modifiers.rawValue |= bit;
  return modifiers;
}

constexpr CGEventFlags flagsOf(ModifierSet modifiers) {
  CGEventFlags flags = 0;
  for (const auto& [bit, flag] : modifierFlags)
    if (modifiers.contains(bit)) flags |= flag;
  return flags;
}

static_assert(modifiersOf(kCGEventFlagMaskCommand | kCGEventFlagMaskAlternate).rawValue == 3);
static_assert(modifiersOf(kCGEventFlagMaskAlphaShift | kCGEventFlagMaskSecondaryFn).rawValue == 0);
static_assert(modifiersOf(flagsOf(ModifierSet{15})).rawValue == 15);

}  // namespace nimbletype
