#pragma once
#import <os/log.h>

#include <map>
#include <string>

#include "platform/system/system_log.h"

namespace nimbletype {

// The port over the unified log; lines are public, as they never carry the user's text.
class MacSystemLog final : public SystemLog {
 public:
  void log(std::string_view category, std::string_view message) override;

 private:
  std::map<std::string, os_log_t, std::less<>> categories_;
};

}  // namespace nimbletype
