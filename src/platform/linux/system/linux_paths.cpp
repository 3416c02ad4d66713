#include "platform/linux/system/linux_paths.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace nimbletype {
namespace {

std::filesystem::path dataHome() {
  // Anything but an absolute path is to be ignored.
  if (const char* home = std::getenv("XDG_DATA_HOME"); home && home[0] == '/') return home;
  const char* home = std::getenv("HOME");
  return std::filesystem::path(home ? home : "/") / ".local" / "share";
}

}  // namespace

std::filesystem::path dataFolder() {
  return dataHome() / "Nimbletype";
}

std::string userFullName() {
  const passwd* entry = getpwuid(getuid());
  if (!entry) return {};
  const std::string comment = entry->pw_gecos ? entry->pw_gecos : "";
  const std::string name = comment.substr(0, comment.find(','));
  return name.empty() ? entry->pw_name : name;
}

}  // namespace nimbletype
