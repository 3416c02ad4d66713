#include "core/settings/preferences_json.h"

#include <nlohmann/json.hpp>

#include "core/settings/preferences.h"

namespace nimbletype {
namespace {

using Json = nlohmann::ordered_json;

std::optional<DefaultsValue> storedForm(const Json& value, SettingType type) {
  if (type == SettingType::keyCombo)
    return value.is_object() || value.is_null() ? std::optional<DefaultsValue>(DataValue{value.dump()})
                                                : std::nullopt;
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX) return std::nullopt;
  if (value.is_number_integer()) return value.get<std::int64_t>();
  if (value.is_number_float()) return value.get<double>();
  if (value.is_string()) return value.get<std::string>();
  return std::nullopt;
}

Json jsonForm(const DefaultsValue& stored) {
  return std::visit(
      []<typename T>(const T& value) -> Json {
        if constexpr (std::same_as<T, DataValue>)
          return Json::parse(value.bytes, nullptr, false);
        else
          return value;
      },
      stored);
}

std::string expectation(const AnySetting& setting) {
  switch (setting.type()) {
    case SettingType::boolean:
      return "true or false";
    case SettingType::number:
      return "a number";
    case SettingType::integer:
      return "a whole number";
    case SettingType::text:
      return "a string";
    case SettingType::keyCombo:
      return R"({"keyCode":…,"modifiers":…} or null)";
    case SettingType::choice:
      break;
  }
  std::string choices = "one of ";
  for (const auto choice : setting.choices()) {
    if (choice != setting.choices().front()) choices += ", ";
    choices.append("\"").append(choice).append("\"");
  }
  return choices;
}

}  // namespace

std::expected<void, std::string> setFromJson(Preferences& preferences, std::string_view key,
                                             const Json& value) {
  auto* setting = preferences.find(key);
  if (!setting) return std::unexpected("There is no setting \"" + std::string(key) + "\".");
  const auto stored = storedForm(value, setting->type());
  if (!stored || !setting->assign(*stored))
    return std::unexpected("The setting \"" + std::string(key) + "\" must be " + expectation(*setting) + ".");
  return {};
}

Json toJson(const Preferences& preferences) {
  Json all = Json::object();
  for (const auto* setting : preferences.settings())
    all[std::string(setting->key())] = jsonForm(setting->stored());
  return all;
}

}  // namespace nimbletype
