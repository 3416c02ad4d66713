#include "platform/linux/language/linux_region_source.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "text/format/date_format.h"

namespace nimbletype {
namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

// "de_DE.UTF-8@euro" without what is not about the language and the country.
std::string plainLocale(std::string_view posix) {
  std::string name(posix.substr(0, posix.find_first_of(".@")));
  return name == "C" || name == "POSIX" ? "en_US" : name;
}

std::string numberLocale() {
  for (const char* name : {"LC_ALL", "LC_NUMERIC", "LANG"})
    if (const auto value = environment(name); !value.empty()) return plainLocale(value);
  return "en_US";
}

// The name of a zone's file, such as "Europe/Berlin" of "/usr/share/zoneinfo/Europe/Berlin".
std::string zoneOfFile(const std::string& path) {
  constexpr std::string_view folder = "zoneinfo/";
  const auto at = path.rfind(folder);
  return at == std::string::npos ? std::string() : path.substr(at + folder.size());
}

// ":Europe/Berlin" and a file's path are allowed as well.
std::string zoneOfEnvironment() {
  std::string zone(environment("TZ"));
  if (zone.starts_with(':')) zone.erase(0, 1);
  return zone.starts_with('/') ? zoneOfFile(zone) : zone;
}

std::string zoneOfSystem() {
  std::error_code error;
  const auto target = std::filesystem::read_symlink("/etc/localtime", error);
  if (std::string zone = error ? std::string() : zoneOfFile(target.string()); !zone.empty()) return zone;
  std::string zone;
  std::ifstream("/etc/timezone") >> zone;
  return zone;
}

}  // namespace

Region LinuxRegionSource::region() const {
  for (const std::string& zone : {zoneOfEnvironment(), zoneOfSystem()})
    if (!zone.empty() && text::isTimeZone(zone)) return {numberLocale(), zone};
  return {numberLocale(), {}};
}

}  // namespace nimbletype
