#pragma once
#include "platform/system/login_item.h"

namespace nimbletype {

// The bundle as one of the login items in the system's settings. Where the user switched it off there, it
// stays off until the user switches it on again.
class MacLoginItem final : public LoginItem {
 public:
  MacLoginItem();
  bool isOn() const override;
  std::expected<void, std::string> set(bool on) override;
};

}  // namespace nimbletype
