#pragma once
#include "platform/system/system_log.h"

namespace nimbletype {

// Diagnostics on standard error, which the session keeps in its journal. Silent unless asked for, as nobody
// reads the terminal of an application that was started from a menu.
class StderrSystemLog final : public SystemLog {
 public:
  explicit StderrSystemLog(bool verbose) : verbose_(verbose) {}
  void log(std::string_view category, std::string_view message) override;

 private:
  bool verbose_;
};

}  // namespace nimbletype
