#pragma once
#include <expected>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// JSON to and from servers. Whatever the bytes are, nothing here throws.
namespace nimbletype::server_json {

// In one line, keys in the given order; malformed UTF-8 becomes U+FFFD.
std::string written(const nlohmann::ordered_json& value);

// None when the text is not JSON, or nested so deeply that nobody means it.
std::optional<nlohmann::json> parsed(std::string_view text);
// None unless `value` is an object with a string under this key.
std::optional<std::string> string(const nlohmann::json& value, const char* key);
// The strings under `key` of the objects in the array under `listKey`; none when any of this is otherwise.
std::optional<std::vector<std::string>> strings(const nlohmann::json& value, const char* listKey,
                                                const char* key);

}  // namespace nimbletype::server_json
