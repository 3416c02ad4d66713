#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/bus/glib_handle.h"

namespace nimbletype {

// What a desktop says about its look; absent where it does not say.
struct DesktopChoices {
  std::optional<std::uint32_t> colorScheme;  // 1 for dark, 2 for light
  std::optional<std::string> theme;          // a name
  std::optional<bool> animations;
  std::optional<std::uint32_t> reducedMotion;  // 1 for reduced
  bool operator==(const DesktopChoices&) const = default;

  // A theme says that it is dark by its name, and is the older word.
  std::optional<bool> prefersDark() const;
  bool reducesMotion() const;
  // A setting as the desktop's portal tells it; those of no concern are passed over.
  void take(std::string_view space, std::string_view key, GVariant* value);
};

}  // namespace nimbletype
