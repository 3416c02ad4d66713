#pragma once
#include "platform/storage/disk_space.h"

namespace nimbletype {

// What the file system leaves to users other than root.
class LinuxDiskSpace final : public DiskSpace {
 public:
  std::optional<std::int64_t> available(const std::filesystem::path& folder) const override;
};

}  // namespace nimbletype
