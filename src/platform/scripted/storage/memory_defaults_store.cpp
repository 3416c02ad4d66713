#include "platform/scripted/storage/memory_defaults_store.h"

namespace nimbletype {

std::optional<DefaultsValue> MemoryDefaultsStore::get(std::string_view key) const {
  readKeys.emplace_back(key);
  const auto found = values_.find(key);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void MemoryDefaultsStore::set(std::string_view key, const DefaultsValue& value) {
  writtenKeys.emplace_back(key);
  values_.insert_or_assign(std::string(key), value);
}

void MemoryDefaultsStore::remove(std::string_view key) {
  if (const auto found = values_.find(key); found != values_.end()) values_.erase(found);
}

std::vector<std::string> MemoryDefaultsStore::keys() const {
  std::vector<std::string> all;
  all.reserve(values_.size());
  for (const auto& [key, value] : values_) all.push_back(key);
  return all;
}

}  // namespace nimbletype
