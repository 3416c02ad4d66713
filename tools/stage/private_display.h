#pragma once
#include <sys/types.h>

#include <string>

namespace nimbletype {

// An X server of a test's own, without window manager: nobody else's keys, grabs or focus.
class PrivateDisplay {
 public:
  PrivateDisplay();  // throws when the server does not come up
  ~PrivateDisplay();
  PrivateDisplay(const PrivateDisplay&) = delete;
  PrivateDisplay& operator=(const PrivateDisplay&) = delete;
  const std::string& name() const { return name_; }

 private:
  pid_t server_ = -1;
  std::string name_;
};

}  // namespace nimbletype
