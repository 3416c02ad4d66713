#pragma once
#include <cstdint>
#include <filesystem>
#include <optional>

namespace nimbletype {

class DiskSpace {
 public:
  virtual ~DiskSpace() = default;
  // Bytes that the user's important files may still take on the volume of this folder, which need not exist
  // yet. None when the system does not tell.
  virtual std::optional<std::int64_t> available(const std::filesystem::path& folder) const = 0;
};

// The folder itself, or else the closest one above it that is there.
std::filesystem::path nearestExisting(const std::filesystem::path& folder);

}  // namespace nimbletype
