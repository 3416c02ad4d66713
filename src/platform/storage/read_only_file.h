#pragma once
#include "platform/storage/atomic_file.h"

namespace nimbletype {

// Somebody else's file, which stays as it is.
class ReadOnlyFile final : public FileStore {
 public:
  explicit ReadOnlyFile(std::filesystem::path path) : file_(std::move(path)) {}
  std::optional<std::string> read() const override { return file_.read(); }
  bool write(const std::string& /*content*/) override { return false; }
  bool setAside() override { return false; }
  bool erase() override { return false; }

 private:
  AtomicFile file_;
};

}  // namespace nimbletype
