#include "platform/linux/system/linux_paths.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace nimbletype {
namespace {

std::filesystem::path folderNamed(const char* variable, const char* inHome) {
  // Anything but an absolute path is to be ignored.
  if (const char* folder = std::getenv(variable); folder && folder[0] == '/') return folder;
  const char* home = std::getenv("HOME");
  return std::filesystem::path(home ? home : "/") / inHome;
}

}  // namespace

std::filesystem::path dataFolder() {
  return folderNamed("XDG_DATA_HOME", ".local/share") / "Nimbletype";
}

std::filesystem::path configHome() {
  return folderNamed("XDG_CONFIG_HOME", ".config");
}

std::filesystem::path runningProgram() {
  constexpr std::string_view replaced = " (deleted)";  // by an update
  std::error_code error;
  std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
  if (path.ends_with(replaced)) path.erase(path.size() - replaced.size());
  return path;
}

std::string userFullName() {
  const passwd* entry = getpwuid(getuid());
  if (!entry) return {};
  const std::string comment = entry->pw_gecos ? entry->pw_gecos : "";
  const std::string name = comment.substr(0, comment.find(','));
  return name.empty() ? entry->pw_name : name;
}

}  // namespace nimbletype
