#include "platform/linux/storage/linux_disk_space.h"

#include <limits>
#include <system_error>

namespace nimbletype {

std::optional<std::int64_t> LinuxDiskSpace::available(const std::filesystem::path& folder) const {
  std::error_code error;
  const auto space = std::filesystem::space(nearestExisting(folder), error);
  constexpr auto most = static_cast<std::uintmax_t>(std::numeric_limits<std::int64_t>::max());
  if (error || space.available > most) return std::nullopt;
  return static_cast<std::int64_t>(space.available);
}

}  // namespace nimbletype
