#pragma once
#include <expected>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace nimbletype {

class Preferences;

// Writes a setting from JSON: a bool, a number, a string, {"keyCode":48,"modifiers":0}, or null for no
// combination. The error is one sentence that names what was wrong.
std::expected<void, std::string> setFromJson(Preferences& preferences, std::string_view key,
                                             const nlohmann::ordered_json& value);

// Every setting by its key, in table order, in the form `setFromJson` takes.
nlohmann::ordered_json toJson(const Preferences& preferences);

}  // namespace nimbletype
