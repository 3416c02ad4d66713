#pragma once
#include "platform/keys/secure_input.h"

namespace nimbletype {

class MacSecureInput final : public SecureInput {
 public:
  bool isOn() const override;
};

}  // namespace nimbletype
