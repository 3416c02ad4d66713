#include "engines/servers/server_json.h"

#include <utility>

namespace nimbletype::server_json {
namespace {

constexpr int deepest = 100;

// Brackets inside of strings do not count.
bool nestsTooDeeply(std::string_view text) {
  int depth = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') quoted = !quoted;
    if (quoted && c == '\\') ++i;
    if (quoted) continue;
    if (c == '[' || c == '{') ++depth;
    if (c == ']' || c == '}') --depth;
    if (depth > deepest) return true;
  }
  return false;
}

}  // namespace

std::string written(const nlohmann::ordered_json& value) {
  return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

std::optional<nlohmann::json> parsed(std::string_view text) {
  if (nestsTooDeeply(text)) return std::nullopt;
  auto value = nlohmann::json::parse(text, nullptr, false);
  if (value.is_discarded()) return std::nullopt;
  return value;
}

std::optional<std::string> string(const nlohmann::json& value, const char* key) {
  if (!value.is_object()) return std::nullopt;
  const auto found = value.find(key);
  if (found == value.end() || !found->is_string()) return std::nullopt;
  return found->get<std::string>();
}

std::optional<std::vector<std::string>> strings(const nlohmann::json& value, const char* listKey,
                                                const char* key) {
  if (!value.is_object()) return std::nullopt;
  const auto list = value.find(listKey);
  if (list == value.end() || !list->is_array()) return std::nullopt;
  std::vector<std::string> all;
  for (const auto& each : *list) {
    auto text = string(each, key);
    if (!text) return std::nullopt;
    all.push_back(std::move(*text));
  }
  return all;
}

}  // namespace nimbletype::server_json
