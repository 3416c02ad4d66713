#pragma once
#include <vector>

#include "platform/storage/file_store.h"

namespace nimbletype {

// A file that lives as long as the object; its parts are open to the script.
class MemoryFileStore : public FileStore {
 public:
  std::optional<std::string> read() const override { return content; }
  bool write(const std::string& newContent) override;
  bool setAside() override;
  bool erase() override;

  std::optional<std::string> content;
  std::vector<std::string> asides;  // contents set aside
  bool failsToWrite = false;
  bool stays = false;  // it can be neither set aside nor erased
  int writes = 0;      // those that succeeded
};

}  // namespace nimbletype
