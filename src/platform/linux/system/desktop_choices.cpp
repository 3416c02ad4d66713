#include "platform/linux/system/desktop_choices.h"

#include <algorithm>
#include <cctype>

namespace nimbletype {
namespace {

constexpr std::string_view appearance = "org.freedesktop.appearance", gnome = "org.gnome.desktop.interface";

bool isDarkTheme(std::string name) {
  std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
  return name.ends_with("-dark");
}

std::optional<std::uint32_t> numberIn(GVariant* v) {
  const bool isNumber = g_variant_is_of_type(v, G_VARIANT_TYPE_UINT32);
  return isNumber ? std::optional(g_variant_get_uint32(v)) : std::nullopt;
}

}  // namespace

std::optional<bool> DesktopChoices::prefersDark() const {
  if (colorScheme == 1U || colorScheme == 2U) return colorScheme == 1U;
  return theme && isDarkTheme(*theme) ? std::optional(true) : std::nullopt;
}

bool DesktopChoices::reducesMotion() const {
  return reducedMotion == 1U || animations == false;
}

void DesktopChoices::take(std::string_view space, std::string_view key, GVariant* value) {
  if (!value) return;
  if (space == appearance && key == "color-scheme") colorScheme = numberIn(value);
  if (space == appearance && key == "reduced-motion") reducedMotion = numberIn(value);
  if (space == gnome && key == "gtk-theme") theme = stringOf(value);
  if (space == gnome && key == "enable-animations" && g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN))
    animations = g_variant_get_boolean(value) != FALSE;
}

}  // namespace nimbletype
