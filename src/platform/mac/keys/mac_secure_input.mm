#include "platform/mac/keys/mac_secure_input.h"

#import <Carbon/Carbon.h>

namespace nimbletype {

bool MacSecureInput::isOn() const {
  return IsSecureEventInputEnabled();
}

}  // namespace nimbletype
