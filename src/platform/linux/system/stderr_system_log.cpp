#include "platform/linux/system/stderr_system_log.h"

#include <cstdio>

namespace nimbletype {

void StderrSystemLog::log(std::string_view category, std::string_view message) {
  if (!verbose_) return;
  std::fprintf(stderr, "com.moravelle.nimbletype %.*s: %.*s\n", static_cast<int>(category.size()),
               category.data(), static_cast<int>(message.size()), message.data());
}

}  // namespace nimbletype
