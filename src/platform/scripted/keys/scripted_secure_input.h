#pragma once
#include "platform/keys/secure_input.h"

namespace nimbletype {

class ScriptedSecureInput : public SecureInput {
 public:
  bool isOn() const override { return on; }

  bool on = false;
};

}  // namespace nimbletype
