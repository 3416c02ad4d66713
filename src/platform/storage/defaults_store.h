#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace nimbletype {

// Bytes that are not text, such as an encoded key combination.
struct DataValue {
  std::string bytes;
  bool operator==(const DataValue&) const = default;
};

// Types are kept: a bool never reads back as a number, an int never as a double.
using DefaultsValue = std::variant<bool, std::int64_t, double, std::string, DataValue>;

// The user's settings, key by key. Writes are on disk, whole, before they return or soon after. Main thread
// only.
class DefaultsStore {
 public:
  virtual ~DefaultsStore() = default;
  virtual std::optional<DefaultsValue> get(std::string_view key) const = 0;
  virtual void set(std::string_view key, const DefaultsValue& value) = 0;
  virtual void remove(std::string_view key) = 0;
  virtual std::vector<std::string> keys() const = 0;
};

}  // namespace nimbletype
