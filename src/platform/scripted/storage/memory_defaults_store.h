#pragma once
#include <functional>
#include <map>

#include "platform/storage/defaults_store.h"

namespace nimbletype {

// Settings that live as long as the object.
class MemoryDefaultsStore : public DefaultsStore {
 public:
  std::optional<DefaultsValue> get(std::string_view key) const override;
  void set(std::string_view key, const DefaultsValue& value) override;
  void remove(std::string_view key) override;
  std::vector<std::string> keys() const override;

  // Keys in the order they were read and written, for tests that care.
  mutable std::vector<std::string> readKeys;
  std::vector<std::string> writtenKeys;

 private:
  std::map<std::string, DefaultsValue, std::less<>> values_;
};

}  // namespace nimbletype
