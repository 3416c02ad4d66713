#pragma once

namespace nimbletype {

// Whether some application keeps all key presses to itself (a password prompt).
class SecureInput {
 public:
  virtual ~SecureInput() = default;
  virtual bool isOn() const = 0;
};

}  // namespace nimbletype
