#pragma once
#include <string_view>

namespace nimbletype {

// Diagnostic lines under the product's own subsystem. Never carries the user's text.
class SystemLog {
 public:
  virtual ~SystemLog() = default;
  virtual void log(std::string_view category, std::string_view message) = 0;
};

}  // namespace nimbletype
