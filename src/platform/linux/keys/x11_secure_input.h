#pragma once
#include "platform/keys/secure_input.h"

namespace nimbletype {

// X11 knows no secure input: a password prompt grabs the keyboard, and then no key reaches the tap anyway.
class X11SecureInput final : public SecureInput {
 public:
  bool isOn() const override { return false; }
};

}  // namespace nimbletype
