#pragma once
#include "platform/storage/disk_space.h"

namespace nimbletype {

// Counts what the system would clear away to make room for important files.
class MacDiskSpace final : public DiskSpace {
 public:
  std::optional<std::int64_t> available(const std::filesystem::path& folder) const override;
};

}  // namespace nimbletype
