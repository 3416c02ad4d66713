#pragma once
#include "platform/event_tap.h"

namespace nimbletype {

class ScriptedSecureInput : public SecureInput {
 public:
  bool isOn() const override { return on; }

  bool on = false;
};

}  // namespace nimbletype
