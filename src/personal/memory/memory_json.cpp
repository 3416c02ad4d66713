#include "personal/memory/memory_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace nimbletype {
namespace {

using Json = nlohmann::ordered_json;
using Seconds = std::chrono::duration<double>;

constexpr WallTime reference = std::chrono::sys_days{std::chrono::January / 1 / 2001};
constexpr double furthest = 1e11;  // three thousand years, which milliseconds can still count

WallTime readDate(const Json& value) {
  const double seconds = value.is_number() ? value.get<double>() : 0;
  return reference + std::chrono::round<Milliseconds>(Seconds(std::clamp(seconds, -furthest, furthest)));
}

std::string takenText(Json& object, const char* name) {
  const auto found = object.find(name);
  if (found == object.end() || !found->is_string()) return {};
  std::string text = std::move(found->get_ref<std::string&>());
  object.erase(found);
  return text;
}

std::optional<MemoryEntry> readEntry(Json& object) {
  if (!object.is_object()) return std::nullopt;
  std::string text = takenText(object, "text"), appKey = takenText(object, "appKey");
  if (text.empty()) return std::nullopt;
  MemoryEntry entry = newEntry(std::move(text), std::move(appKey), readDate(object.value("date", Json())));
  object.erase("date");
  if (!object.empty()) entry.rest = object.dump();
  return entry;
}

void append(SecretBytes& all, std::string&& text) {
  all.insert(all.end(), text.begin(), text.end());
  OPENSSL_cleanse(text.data(), text.size());
}

}  // namespace

Json json(const MemoryEntry& entry) {
  Json object{{"appKey", entry.appKey},
              {"text", entry.text},
              {"date", std::chrono::duration_cast<Seconds>(entry.date - reference).count()}};
  if (!entry.rest.empty()) object.update(Json::parse(entry.rest, nullptr, false));
  return object;
}

SecretBytes encoded(const MemoryEntries& entries) {
  SecretBytes all;
  for (const MemoryEntry& entry : entries) {
    all.push_back(all.empty() ? '[' : ',');
    append(all, json(entry).dump(-1, ' ', false, Json::error_handler_t::replace));
  }
  if (all.empty()) all.push_back('[');
  all.push_back(']');
  return all;
}

std::optional<MemoryEntries> decoded(std::string_view content) {
  Json all = Json::parse(content, nullptr, false);
  if (!all.is_array()) return std::nullopt;
  MemoryEntries entries;
  const std::size_t first = all.size() - std::min(all.size(), mostPassages);
  for (std::size_t i = first; i < all.size(); ++i)
    if (auto entry = readEntry(all[i])) entries.push_back(*std::move(entry));
  return entries;
}

}  // namespace nimbletype
