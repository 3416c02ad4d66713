#pragma once
#include "platform/system/login_item.h"

namespace nimbletype {

class ScriptedLoginItem : public LoginItem {
 public:
  bool isOn() const override { return on; }
  std::expected<void, std::string> set(bool wanted) override {
    if (!refusal.empty()) return std::unexpected(refusal);
    on = wanted;
    return {};
  }

  bool on = false;
  std::string refusal;  // what the desktop says instead of doing it
};

}  // namespace nimbletype
