#pragma once
#include <concepts>
#include <optional>
#include <span>
#include <string>
#include <type_traits>

#include "core/settings/settings_types.h"
#include "platform/keys/keys.h"
#include "platform/storage/defaults_store.h"

namespace nimbletype {

// What a setting may hold; none for an absent combination.
enum class SettingType { boolean, number, integer, text, choice, keyCombo };

using OptionalKeyCombo = std::optional<KeyCombo>;

// How each type of setting is stored. Decoding yields none for a value that is not of the type.
DefaultsValue encodeSetting(bool value);
DefaultsValue encodeSetting(double value);
DefaultsValue encodeSetting(int value);
DefaultsValue encodeSetting(const std::string& value);
DefaultsValue encodeSetting(const OptionalKeyCombo& value);

std::optional<bool> decodeSetting(const DefaultsValue& value, std::type_identity<bool> type);
std::optional<double> decodeSetting(const DefaultsValue& value, std::type_identity<double> type);
std::optional<int> decodeSetting(const DefaultsValue& value, std::type_identity<int> type);
std::optional<std::string> decodeSetting(const DefaultsValue& value, std::type_identity<std::string> type);
// The outer absence means "not a combination", the inner one "no combination".
std::optional<OptionalKeyCombo> decodeSetting(const DefaultsValue& value,
                                              std::type_identity<OptionalKeyCombo> type);

template <typename Enum>
  requires std::is_enum_v<Enum>
DefaultsValue encodeSetting(Enum value) {
  return std::string(rawValue(value));
}

template <typename Enum>
  requires std::is_enum_v<Enum>
std::optional<Enum> decodeSetting(const DefaultsValue& value, std::type_identity<Enum> /*type*/) {
  const auto* raw = std::get_if<std::string>(&value);
  return raw ? fromRawValue<Enum>(*raw) : std::nullopt;
}

template <typename T>
constexpr SettingType settingType() {
  if constexpr (std::same_as<T, bool>)
    return SettingType::boolean;
  else if constexpr (std::same_as<T, double>)
    return SettingType::number;
  else if constexpr (std::same_as<T, int>)
    return SettingType::integer;
  else if constexpr (std::same_as<T, std::string>)
    return SettingType::text;
  else if constexpr (std::same_as<T, OptionalKeyCombo>)
    return SettingType::keyCombo;
  else
    return SettingType::choice;
}

// The raw values a choice may take; empty for the other types.
template <typename T>
constexpr std::span<const std::string_view> settingChoices() {
  if constexpr (std::is_enum_v<T>)
    return RawValues<T>::all;
  else
    return {};
}

}  // namespace nimbletype
