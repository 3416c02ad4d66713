#pragma once
#include <filesystem>

#include "platform/storage/atomic_file.h"

namespace nimbletype {

// What the application keeps in its folder on every desktop, besides its settings.
struct DataFiles {
  explicit DataFiles(const std::filesystem::path& folder)
      : rules(folder / "rules.json"), statistics(folder / "stats.json"), memory(folder / "memory.sealed") {}
  AtomicFile rules, statistics, memory;
};

}  // namespace nimbletype
