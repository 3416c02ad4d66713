#pragma once
#include "platform/system/login_item.h"
#include "platform/system/observers.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// The switch for starting with the login. There is no setting behind it: the desktop's word is what holds.
class LaunchAtLogin {
 public:
  LaunchAtLogin(LoginItem& item, SystemLog& log) : item_(item), log_(log) {}

  bool isOn() const { return item_.isOn(); }
  // A failure is logged, and leaves what the desktop says.
  void set(bool on);
  // The desktop's word may have changed.
  void refresh() { observers_.notify(); }
  // Told after every attempt and refresh.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

 private:
  LoginItem& item_;
  SystemLog& log_;
  Observers observers_;
};

}  // namespace nimbletype
