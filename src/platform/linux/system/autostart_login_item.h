#pragma once
#include <filesystem>

#include "platform/system/login_item.h"

namespace nimbletype {

// The user's desktop file that desktops start programs by at login. One that the system brings along for all
// users is not looked at.
class AutostartLoginItem final : public LoginItem {
 public:
  // `program` is what will be started.
  AutostartLoginItem(const std::filesystem::path& autostartFolder, std::filesystem::path program);

  bool isOn() const override;
  std::expected<void, std::string> set(bool on) override;

 private:
  std::filesystem::path file_, program_;
};

}  // namespace nimbletype
