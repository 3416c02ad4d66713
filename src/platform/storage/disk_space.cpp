#include "platform/storage/disk_space.h"

#include <system_error>

namespace nimbletype {

std::filesystem::path nearestExisting(const std::filesystem::path& folder) {
  std::error_code error;
  auto place = std::filesystem::absolute(folder, error);
  while (!std::filesystem::exists(place, error) && place.has_relative_path()) place = place.parent_path();
  return place;
}

}  // namespace nimbletype
