#include "core/settings/setting_codec.h"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace nimbletype {
namespace {

using Json = nlohmann::ordered_json;

// JSON that no combination encodes to.
constexpr std::string_view emptyMarker = "null";

std::optional<unsigned> unsignedField(const Json& object, const char* name, unsigned limit) {
  const auto found = object.find(name);
  if (found == object.end() || !found->is_number_unsigned()) return std::nullopt;
  const auto value = found->get<std::uint64_t>();
  if (value > limit) return std::nullopt;
  return static_cast<unsigned>(value);
}

}  // namespace

DefaultsValue encodeSetting(bool value) {
  return value;
}
DefaultsValue encodeSetting(double value) {
  return value;
}
DefaultsValue encodeSetting(int value) {
  return std::int64_t{value};
}
DefaultsValue encodeSetting(const std::string& value) {
  return value;
}

DefaultsValue encodeSetting(const OptionalKeyCombo& value) {
  if (!value) return DataValue{std::string(emptyMarker)};
  const Json object{{"keyCode", value->keyCode}, {"modifiers", value->modifiers.rawValue}};
  return DataValue{object.dump()};
}

std::optional<bool> decodeSetting(const DefaultsValue& value, std::type_identity<bool> /*type*/) {
  const auto* found = std::get_if<bool>(&value);
  return found ? std::optional(*found) : std::nullopt;
}

std::optional<double> decodeSetting(const DefaultsValue& value, std::type_identity<double> /*type*/) {
  // Whoever edits by hand writes 1 for 1.0.
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  const auto* found = std::get_if<double>(&value);
  return found && std::isfinite(*found) ? std::optional(*found) : std::nullopt;
}

std::optional<int> decodeSetting(const DefaultsValue& value, std::type_identity<int> /*type*/) {
  const auto* found = std::get_if<std::int64_t>(&value);
  if (!found || *found < std::numeric_limits<int>::min() || *found > std::numeric_limits<int>::max())
    return std::nullopt;
  return static_cast<int>(*found);
}

std::optional<std::string> decodeSetting(const DefaultsValue& value,
                                         std::type_identity<std::string> /*type*/) {
  const auto* found = std::get_if<std::string>(&value);
  return found ? std::optional(*found) : std::nullopt;
}

std::optional<OptionalKeyCombo> decodeSetting(const DefaultsValue& value,
                                              std::type_identity<OptionalKeyCombo> /*type*/) {
  const auto* data = std::get_if<DataValue>(&value);
  if (!data) return std::nullopt;
  if (data->bytes == emptyMarker) return OptionalKeyCombo();
  const auto object = Json::parse(data->bytes, nullptr, false);
  if (!object.is_object()) return std::nullopt;
  const auto keyCode = unsignedField(object, "keyCode", std::numeric_limits<std::uint16_t>::max());
  const auto modifiers = unsignedField(object, "modifiers", 15);
  if (!keyCode || !modifiers) return std::nullopt;
  return KeyCombo{static_cast<std::uint16_t>(*keyCode), {static_cast<std::uint8_t>(*modifiers)}};
}

}  // namespace nimbletype
