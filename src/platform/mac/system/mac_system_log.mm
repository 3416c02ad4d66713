#include "platform/mac/system/mac_system_log.h"

namespace nimbletype {

void MacSystemLog::log(std::string_view category, std::string_view message) {
  auto found = categories_.find(category);
  if (found == categories_.end()) {
    std::string name(category);
    os_log_t created = os_log_create("com.moravelle.nimbletype", name.c_str());
    found = categories_.emplace(std::move(name), created).first;
  }
  os_log(found->second, "%{public}s", std::string(message).c_str());
}

}  // namespace nimbletype
