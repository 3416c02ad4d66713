#pragma once
#include "platform/storage/disk_space.h"

namespace nimbletype {

class ScriptedDiskSpace final : public DiskSpace {
 public:
  std::optional<std::int64_t> available(const std::filesystem::path&) const override { return bytes; }

  std::optional<std::int64_t> bytes = std::int64_t{100'000'000'000};
};

}  // namespace nimbletype
