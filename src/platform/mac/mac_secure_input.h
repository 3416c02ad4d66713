#pragma once
#include "platform/event_tap.h"

namespace nimbletype {

class MacSecureInput final : public SecureInput {
 public:
  bool isOn() const override;
};

}  // namespace nimbletype
