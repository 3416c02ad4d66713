#pragma once
#include <expected>
#include <string>

namespace nimbletype {

// Whether the application starts when the user logs in. Main thread only.
class LoginItem {
 public:
  virtual ~LoginItem() = default;
  // As the desktop has it now; another program may have changed it.
  virtual bool isOn() const = 0;
  // What the desktop says when it does not do so. Asking for what is so already succeeds.
  virtual std::expected<void, std::string> set(bool on) = 0;
};

}  // namespace nimbletype
